# Writes a C++ source that holds the files of two folders: cmake -DPAGES=… -DBUNDLE=… -DOUTPUT=… -P EmbedAssets.cmake
cmake_minimum_required(VERSION 3.25)

function(content_type FILE RESULT)
    set(.html "text/html; charset=utf-8")
    set(.css "text/css; charset=utf-8")
    set(.js "text/javascript; charset=utf-8")
    set(.svg "image/svg+xml")
    set(.png "image/png")
    set(.webmanifest "application/manifest+json")
    get_filename_component(ending ${FILE} LAST_EXT)
    if(NOT DEFINED ${ending})
        message(FATAL_ERROR "${FILE}: no content type is known for ${ending}; add it to EmbedAssets.cmake")
    endif()
    set(${RESULT} ${${ending}} PARENT_SCOPE)
endfunction()

# In the order of the names' bytes, which the binary search relies on.
file(GLOB pages RELATIVE ${PAGES} ${PAGES}/*)
file(GLOB bundle RELATIVE ${BUNDLE} ${BUNDLE}/*)
set(names ${pages} ${bundle})
list(SORT names COMPARE STRING CASE SENSITIVE)

set(entries "")
foreach(name IN LISTS names)
    content_type(${name} type)
    set(file ${PAGES}/${name})
    if(NOT name IN_LIST pages)
        set(file ${BUNDLE}/${name})
    elseif(name IN_LIST bundle)
        message(FATAL_ERROR "${name} stands both in ${PAGES} and in ${BUNDLE}: one name, one file")
    endif()
    file(SHA256 ${file} digest)
    string(SUBSTRING ${digest} 0 16 tag)
    file(READ ${file} bytes HEX)
    string(LENGTH "${bytes}" digits)
    math(EXPR size "${digits} / 2")
    string(REGEX REPLACE "(..)" "\\\\x\\1" literal "${bytes}")
    string(APPEND entries
        "    {\"${name}\", \"${type}\", std::string_view(\"${literal}\", ${size}), \"\\\"${tag}\\\"\"},\n")
endforeach()

file(WRITE ${OUTPUT} "#include \"controller/web/Assets.h\"

#include <algorithm>
#include <iterator>

namespace {
constexpr Asset kAssets[] = {
${entries}};
} // namespace

const Asset* FindAsset(std::string_view name) noexcept {
    const auto* const found = std::lower_bound(
        std::begin(kAssets), std::end(kAssets), name,
        [](const Asset& asset, std::string_view wanted) { return asset.name < wanted; });
    return found != std::end(kAssets) && found->name == name ? found : nullptr;
}
")
