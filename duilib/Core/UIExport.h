#pragma once

// UILIB_API marks what DuiLib.dll exports.
#if defined(UILIB_EXPORTS)
#define UILIB_API __declspec(dllexport)
#elif defined(UILIB_STATIC)
#define UILIB_API
#else
#define UILIB_API __declspec(dllimport)
#endif

#define UILIB_COMDAT __declspec(selectany)
