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

// Only the last part of "place: what: reason", and nothing that is quoted in it. What slips through
// of an input would make every variation of it look new, so there are only so many values.
std::uint64_t ComplaintHash()
{
    constexpr std::uint64_t kValues = 128;
    const DuiLib::CDuiString text = DuiLib::CPaintManagerUI::GetLastErrorText();
    std::wstring_view reason = text.GetData();
    reason = reason.substr(0, reason.find_first_of(L"\"'<>"));
    reason.remove_prefix(std::min(reason.rfind(L": ") + 1, reason.size()));
    std::uint64_t hash = kHashSeed;
    for (const wchar_t ch : reason) {
        if (ch < L'0' || ch > L'9')
            hash = HashStep(hash, ch);
    }
    return hash % kValues;
}

} // namespace fuzz
