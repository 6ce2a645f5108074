# cmake -DOUT=file.cpp -DHEADER=header.h -DNAMESPACE=name -DTEXTS=kName=path,... -P EmbedText.cmake
# Writes text files into a source as std::string_view constants.
set(source "#include \"${HEADER}\"\n\nnamespace ${NAMESPACE} {\n")
string(REPLACE "," ";" texts "${TEXTS}")
foreach(text IN LISTS texts)
  string(REGEX MATCH "^([^=]+)=(.*)$" matched "${text}")
  set(name "${CMAKE_MATCH_1}")
  file(READ "${CMAKE_MATCH_2}" hex HEX)
  string(REGEX REPLACE "(..)" "\\\\x\\1" bytes "${hex}")
  string(REPEAT "." 64 line)
  string(REGEX REPLACE "(${line})" "\\1\"\n    \"" bytes "${bytes}")
  string(LENGTH "${hex}" digits)
  math(EXPR length "${digits} / 2")
  string(APPEND source
         "const std::string_view ${name}{\n    \"${bytes}\",\n    ${length}};\n")
endforeach()
string(APPEND source "}  // namespace ${NAMESPACE}\n")
file(WRITE "${OUT}" "${source}")
