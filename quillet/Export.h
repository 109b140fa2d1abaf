#pragma once

// QUILLET_API marks what Quillet.dll exports.
#if defined(QUILLET_EXPORTS)
#define QUILLET_API __declspec(dllexport)
#elif defined(QUILLET_STATIC)
#define QUILLET_API
#else
#define QUILLET_API __declspec(dllimport)
#endif
