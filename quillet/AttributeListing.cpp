#include "quillet/AttributeListing.h"

namespace Quillet {

void SetAttributeListener(AttributeListener listener)
{
    onUnknownAttribute = listener;
}

} // namespace Quillet
