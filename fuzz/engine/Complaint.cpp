#include "fuzz/engine/Complaint.h"

#include "fuzz/engine/Bytes.h"

#include <UIlib.h>

#include <algorithm>
#include <string_view>

namespace fuzz {

void ClearComplaint()
{
    DuiLib::CPaintManagerUI::SetLastErrorText(L"");
}

// Only the last part of "place: what: reason", and nothing that is quoted in it.
std::uint64_t ComplaintHash()
{
    const DuiLib::CDuiString text = DuiLib::CPaintManagerUI::GetLastErrorText();
    std::wstring_view reason = text.GetData();
    reason.remove_prefix(std::min(reason.rfind(L": ") + 1, reason.size()));
    std::uint64_t hash = kHashSeed;
    bool quoted = false;
    for (const wchar_t ch : reason) {
        quoted ^= ch == L'"' || ch == L'\'' || ch == L'<' || ch == L'>';
        if (!quoted && (ch < L'0' || ch > L'9'))
            hash = HashStep(hash, ch);
    }
    return hash;
}

} // namespace fuzz
