// tests/validate/attach_property_list_posix.cpp — a property list in a file beside the library.
#include <fstream>
#include <stdexcept>

#include "tests/validate/attach_property_list.h"

void attachPropertyList(const std::filesystem::path& library, const std::string& list) {
  auto path = library;
  std::ofstream file(path.replace_extension(".pipl"), std::ios::binary);
  if (!(file << list).flush()) throw std::runtime_error("no property list could be written");
}
