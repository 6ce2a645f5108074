# Libraries of headers alone for another system than this one: this system's copies, and nothing else
# of /usr/include, put where the cross compiler may look.
include_guard(GLOBAL)
set(packages "${CMAKE_BINARY_DIR}/header_packages")
foreach(package CLI fmt nlohmann)
  if(NOT EXISTS "/usr/include/${package}")
    message(FATAL_ERROR "Building the programs for another system takes the headers in "
                        "/usr/include/${package} (Debian: libcli11-dev libfmt-dev nlohmann-json3-dev).")
  endif()
  file(COPY "/usr/include/${package}" DESTINATION "${packages}")
endforeach()
foreach(target CLI11::CLI11 fmt::fmt nlohmann_json::nlohmann_json)
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${target} SYSTEM INTERFACE "${packages}")
endforeach()
target_compile_definitions(fmt::fmt INTERFACE FMT_HEADER_ONLY)
