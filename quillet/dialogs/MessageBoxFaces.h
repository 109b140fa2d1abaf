#pragma once

#include <UIlib.h>

#include <span>
#include <string>

namespace DuiLib {

// What a button says and in which colour (ARGB).
struct ButtonFace {
    DWORD colour;
    const wchar_t* text;
};

struct ButtonFaces {
    ButtonFace ok, cancel;
};

// What the buttons of a generation of message boxes say.
struct MessageBoxFaces {
    std::wstring (*resolve)(const wchar_t* text); // what is shown for a text given here
    const wchar_t* onlyButton;                    // type 0
    std::span<const ButtonFaces> byType;          // types 1, 2, ...
};

} // namespace DuiLib
