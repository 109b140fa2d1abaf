#include "fuzz/engine/Complaint.h"

#include "fuzz/engine/Bytes.h"

#include <UIlib.h>

#include <string_view>

namespace fuzz {

void ClearComplaint()
{
    DuiLib::CPaintManagerUI::SetLastErrorText(L"");
}

std::uint64_t ComplaintHash()
{
    const DuiLib::CDuiString complaint = DuiLib::CPaintManagerUI::GetLastErrorText();
    std::uint64_t hash = kHashSeed;
    bool quoted = false;
    for (const wchar_t ch : std::wstring_view(complaint.GetData())) {
        quoted ^= ch == L'"' || ch == L'\'';
        if (!quoted && (ch < L'0' || ch > L'9'))
            hash = HashStep(hash, ch);
    }
    return hash;
}

} // namespace fuzz
