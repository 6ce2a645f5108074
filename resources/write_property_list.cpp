// resources/write_property_list.cpp — writes the property list into a file, while building.
//
// The file stands beside the effect where libraries carry no resources, and is what a resource
// compiler puts into the Windows library.
#include <cstdio>

#include "resources/property_list.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: write_property_list FILE\n");
    return 2;
  }
  const auto bytes = varilum::encodePropertyList();
  std::FILE* file = std::fopen(argv[1], "wb");
  const bool written =
      file != nullptr && std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
  const bool closed = file != nullptr && std::fclose(file) == 0;
  if (written && closed) return 0;
  std::fprintf(stderr, "write_property_list: cannot write %s\n", argv[1]);
  return 1;
}
