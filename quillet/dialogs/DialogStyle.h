#pragma once

#include "win32/Windows.h"

namespace Quillet::Dialogs {

// How the modal dialogs create their windows; the skin draws caption and frame.
inline constexpr DWORD kModalStyle =
    WS_POPUP | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | WS_CAPTION | WS_SYSMENU;
inline constexpr DWORD kModalExStyle = WS_EX_WINDOWEDGE;

} // namespace Quillet::Dialogs
