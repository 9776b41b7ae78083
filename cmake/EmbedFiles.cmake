# Writes OUTPUT, a source that defines AppResources(): the bytes of FILES, by their leaf names.

set(arrays "")
set(table "")
set(index 0)
foreach(file IN LISTS FILES)
  get_filename_component(name ${file} NAME)
  file(READ ${file} hex HEX)
  string(REGEX REPLACE "(................................)" "\\1\n" hex "${hex}")
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${hex}")
  string(APPEND arrays "constexpr unsigned char file${index}[] = {\n${bytes}};\n")
  string(APPEND table "    {\"${name}\", BytesOf(file${index})},\n")
  math(EXPR index "${index} + 1")
endforeach()

file(WRITE ${OUTPUT} "#include \"platform/ui/AppResources.h\"

#include <array>

namespace vintrace {
namespace {

template <std::size_t size>
std::string_view BytesOf(const unsigned char (&file)[size]) {
  return {reinterpret_cast<const char*>(file), size};
}

${arrays}
}  // namespace

std::span<const AppResource> AppResources() {
  static const std::array<AppResource, ${index}> resources{{
${table}  }};
  return resources;
}

}  // namespace vintrace
")
