# Makes one C++ source of the page's template, style and scripts:
#   cmake -D FOLDER=<of page.html> -D OUTPUT=<source> -P EmbedPage.cmake
# The page lets nothing run but this script and this style: their hashes stand in its policy.

# The digest of `text` in the form in which a policy names it.
function(policy_hash text result)
  string(SHA256 hex "${text}")
  string(APPEND hex "00")  # 33 bytes are whole groups of three
  set(digits "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")
  set(base64 "")
  foreach(group RANGE 10)
    math(EXPR begin "6 * ${group}")
    string(SUBSTRING "${hex}" ${begin} 6 bytes)
    foreach(shift IN ITEMS 18 12 6 0)
      math(EXPR index "0x${bytes} >> ${shift} & 63")
      string(SUBSTRING "${digits}" ${index} 1 digit)
      string(APPEND base64 "${digit}")
    endforeach()
  endforeach()
  string(SUBSTRING "${base64}" 0 43 base64)
  set(${result} "sha256-${base64}=" PARENT_SCOPE)
endfunction()

file(READ "${FOLDER}/page.html" page)
file(READ "${FOLDER}/page.css" style)
set(script "")
foreach(part IN ITEMS model tree details grid labels plan page)
  file(READ "${FOLDER}/${part}.js" text)
  string(APPEND script "${text}")
endforeach()
policy_hash("${script}" script_hash)
policy_hash("${style}" style_hash)
foreach(name IN ITEMS script_hash style_hash style script)
  string(REPLACE "@${name}@" "${${name}}" page "${page}")
endforeach()

string(FIND "${page}" "@data@" place)
if(place EQUAL -1 OR page MATCHES "\\)qor-page\"")
  message(FATAL_ERROR "${FOLDER}/page.html has no place for the data, or ends the literal")
endif()
string(SUBSTRING "${page}" 0 ${place} head)
math(EXPR place "${place} + 6")
string(SUBSTRING "${page}" ${place} -1 tail)
file(WRITE "${OUTPUT}" "// Made by EmbedPage.cmake.
#include \"page/PageParts.h\"

namespace qormodel {

const std::string_view pageHead = R\"qor-page(${head})qor-page\";
const std::string_view pageTail = R\"qor-page(${tail})qor-page\";

}  // namespace qormodel
")
