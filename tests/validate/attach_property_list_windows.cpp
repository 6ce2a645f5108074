// tests/validate/attach_property_list_windows.cpp — a property list in the library's resources.
#include <windows.h>

#include <stdexcept>

#include "hostapi/property_list.h"
#include "tests/validate/attach_property_list.h"

void attachPropertyList(const std::filesystem::path& library, const std::string& list) {
  std::string data = list;
  HANDLE update = BeginUpdateResourceW(library.c_str(), FALSE);
  if (update == nullptr ||
      UpdateResourceA(update, kPropertyListResourceType,
                      reinterpret_cast<LPCSTR>(static_cast<ULONG_PTR>(kPropertyListResourceId)),
                      MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), data.data(),
                      static_cast<DWORD>(data.size())) == 0 ||
      EndUpdateResourceW(update, FALSE) == 0) {
    throw std::runtime_error("no property list could be put into the library");
  }
}
