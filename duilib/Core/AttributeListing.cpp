#include "Core/AttributeListing.h"

#include "Core/UIManager.h"
#include "Core/WindowAttributes.h"

namespace DuiLib {

void SetAttributeListener(Quillet::AttributeListener listener)
{
    Quillet::onUnknownAttribute = listener;
}

void AskForWindowAttributes()
{
    CPaintManagerUI manager;
    ApplyWindowAttribute(manager, L"", L"");
}

} // namespace DuiLib
