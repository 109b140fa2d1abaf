# Writes a header with the names that the sources know: classes of the factory, controls of Quillet
# and attributes of all tables. Called with -DSOURCE=... -DOUTPUT=...
file(GLOB_RECURSE sources ${SOURCE}/duilib/*.cpp ${SOURCE}/quillet/*.cpp)
list(SORT sources)

set(attributes "")
foreach(source IN LISTS sources)
    file(READ ${source} text)
    string(REGEX MATCHALL "{L\"[A-Za-z0-9_.]+\",[ \n]*AttributeKind::" rows "${text}")
    foreach(row IN LISTS rows)
        string(REGEX REPLACE "{L\"([A-Za-z0-9_.]+)\".*" "\\1" name "${row}")
        list(APPEND attributes ${name})
    endforeach()
endforeach()
file(STRINGS ${SOURCE}/fuzz/dictionaries/attribute-names.txt more REGEX "^[^#]")
list(APPEND attributes ${more})
list(REMOVE_DUPLICATES attributes)
list(SORT attributes)
list(TRANSFORM attributes REPLACE "(.+)" "    \"\\1\",")
list(JOIN attributes "\n" attributes)

file(READ ${SOURCE}/duilib/Core/ControlFactory.cpp text)
string(REGEX MATCHALL "{L\"C[A-Za-z0-9]+UI\"" rows "${text}")
set(classes "")
foreach(row IN LISTS rows)
    string(REGEX REPLACE "{L\"(.*)\"" "    L\"\\1\"," name "${row}")
    list(APPEND classes "${name}")
endforeach()
list(SORT classes)
list(JOIN classes "\n" classes)

set(controls "")
foreach(source IN LISTS sources)
    if(NOT source MATCHES "^${SOURCE}/quillet/")
        continue()
    endif()
    file(READ ${source} text)
    string(REGEX MATCHALL "CControlUI\\* C[A-Za-z0-9]+UI::CreateControl\\(\\)" rows "${text}")
    foreach(row IN LISTS rows)
        string(REGEX REPLACE ".* C([A-Za-z0-9]+)UI::.*" "\\1" name "${row}")
        list(APPEND controls "    {L\"${name}\", &DuiLib::C${name}UI::CreateControl},")
    endforeach()
endforeach()
list(SORT controls)
list(JOIN controls "\n" controls)

set(content "// Made by fuzz/ListNames.cmake.
#pragma once

#include <quillet/quillet.h>

#include <string_view>

namespace fuzz {

inline constexpr const wchar_t* kToolkitClasses[] = {
${classes}
};

struct QuilletControl {
    const wchar_t* name; // in a skin
    DuiLib::CControlUI* (*create)();
};

inline constexpr QuilletControl kQuilletControls[] = {
${controls}
};

inline constexpr std::string_view kAttributeNames[] = {
${attributes}
};

} // namespace fuzz
")
file(CONFIGURE OUTPUT ${OUTPUT} CONTENT "${content}" @ONLY)
