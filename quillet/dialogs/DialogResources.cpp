#include "quillet/dialogs/DialogResources.h"

#include <UIlib.h>

#include "quillet/resources/ResourceManagerEx.h"

namespace Quillet::Dialogs {

std::wstring TextOf(const wchar_t* id)
{
    return DuiLib::CResourceManager::GetInstance()->GetText(id).GetData();
}

std::wstring Language()
{
    return DuiLib::CResourceManager::GetInstance()->GetLanguage();
}

int Scaled(int designPixels)
{
    return DuiLib::CResourceManagerEx::GetInstance()->Scale(designPixels);
}

} // namespace Quillet::Dialogs
