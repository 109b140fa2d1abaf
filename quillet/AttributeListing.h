#pragma once

#include "quillet/Export.h"
#include "win32/AttributeTable.h"

namespace Quillet {

// For documentation tools. The listener is told of every attribute table of this DLL that is asked
// for a name it does not have; null ends that. Not while other threads apply attributes.
QUILLET_API void SetAttributeListener(AttributeListener listener);

} // namespace Quillet
