#pragma once

#include "Core/UIPlatform.h"
#include "win32/ComPointer.h"
#include "win32/Handles.h"

namespace DuiLib {

// The data of a drag: one picture, offered as a bitmap.
Quillet::ComPointer<IDataObject> MakePictureData(Quillet::UniqueBitmap picture);

// Ends a drag when the left button is released, cancels it with Escape.
Quillet::ComPointer<IDropSource> MakeDropSource();

} // namespace DuiLib
