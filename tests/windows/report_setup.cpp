// tests/windows/report_setup.cpp — writes down what an effect reports at set-up.
//
//   report_setup LIBRARY FILE
// FILE gets lines of a name and a hexadecimal number.
#include <cstdio>
#include <exception>
#include <fstream>

#include "host/effect.h"

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: report_setup LIBRARY FILE\n");
    return 2;
  }
  try {
    const host::EffectModule module{argv[1]};
    host::Host application{host::Role::afterEffects};
    const host::Effect effect{application, module};
    std::ofstream file(argv[2]);
    file << std::hex << "version " << effect.version() << "\nout_flags " << effect.outFlags()
         << "\nout_flags2 " << effect.outFlags2() << "\n";
    file.close();
    if (file) return 0;
    std::fprintf(stderr, "report_setup: cannot write %s\n", argv[2]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "report_setup: %s\n", error.what());
  }
  return 1;
}
