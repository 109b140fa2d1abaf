# Settings that every target of the project shares.

add_library(quillet_warnings INTERFACE)
add_library(Quillet::warnings ALIAS quillet_warnings)
if(MSVC)
    target_compile_options(quillet_warnings INTERFACE
        /W4 /WX /utf-8 /permissive- /wd4251 /wd4275)
else()
    target_compile_options(quillet_warnings INTERFACE
        -Wall -Wextra -Wpedantic -Werror -Wsuggest-override)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # Optimising, GCC 12 sees overruns in wide strings and dangling scope guards that are none.
        target_compile_options(quillet_warnings INTERFACE
            -Wno-array-bounds -Wno-dangling-pointer -Wno-restrict
            -Wno-stringop-overflow -Wno-stringop-overread)
    endif()
endif()

if(MINGW)
    # Wine's debugger reads DWARF 4 at most.
    add_compile_options($<$<CONFIG:Debug>:-gdwarf-4>)
    add_link_options(-Wl,--dynamicbase,--nxcompat,--high-entropy-va)
endif()

if(QUILLET_CHECKED AND NOT MSVC)
    add_compile_options(-O1 -D_GLIBCXX_ASSERTIONS
        -fsanitize=undefined,float-cast-overflow -fsanitize-undefined-trap-on-error
        -fstack-protector-strong)
    add_link_options(-fstack-protector-strong)
endif()

# Objects and exceptions cross the DLLs, so all modules share one C++ runtime, which stands beside
# the programs.
set(QUILLET_RUNTIME_DLLS "")
if(MINGW)
    set(runtime_dlls libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    if(QUILLET_CHECKED)
        list(APPEND runtime_dlls libssp-0.dll)
    endif()
    foreach(dll IN LISTS runtime_dlls)
        execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${dll}
            OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE)
        if(NOT IS_ABSOLUTE "${path}")
            set(path /usr/x86_64-w64-mingw32/lib/${dll})
        endif()
        list(APPEND QUILLET_RUNTIME_DLLS ${path})
    endforeach()
    file(COPY ${QUILLET_RUNTIME_DLLS} DESTINATION ${CMAKE_BINARY_DIR}/bin)
endif()

# The compiler settings of a library or program of this project.
function(quillet_configure target)
    target_compile_features(${target} PUBLIC cxx_std_20)
    set_target_properties(${target} PROPERTIES
        CXX_EXTENSIONS OFF
        CXX_VISIBILITY_PRESET hidden
        PREFIX ""
        IMPORT_PREFIX "lib")
    target_compile_definitions(${target} PRIVATE NOMINMAX)
    target_link_libraries(${target} PRIVATE Quillet::warnings)
endfunction()

# Precompiles the platform headers, and any further ones, for a target with many sources.
function(quillet_precompile target)
    if(QUILLET_PRECOMPILE)
        target_precompile_headers(${target} PRIVATE
            ${PROJECT_SOURCE_DIR}/duilib/Core/UIPlatform.h
            <algorithm> <array> <functional> <map> <memory> <string> <string_view> <unordered_map>
            <vector> ${ARGN})
    endif()
endfunction()

# VERSIONINFO of a DLL, from the one place that holds the version.
function(quillet_add_version_resource target file_name description)
    set(QUILLET_FILE_NAME ${file_name})
    set(QUILLET_FILE_DESCRIPTION ${description})
    configure_file(${PROJECT_SOURCE_DIR}/cmake/version.rc.in
        ${CMAKE_CURRENT_BINARY_DIR}/${target}-version.rc @ONLY)
    target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}-version.rc)
endfunction()
