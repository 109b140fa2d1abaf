#pragma once

#include "Core/UIExport.h"
#include "win32/AttributeTable.h"

namespace DuiLib {

// For documentation tools. The listener is told of every attribute table of this DLL that is asked
// for a name it does not have; null ends that. Not while other threads apply attributes.
UILIB_API void SetAttributeListener(Quillet::AttributeListener listener);

// Asks the table of a skin's Window element for a name that it does not have. The control that its
// rows name is CPaintManagerUI.
UILIB_API void AskForWindowAttributes();

} // namespace DuiLib
