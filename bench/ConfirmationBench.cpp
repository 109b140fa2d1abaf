#include <quillet/quillet.h>

#include "bench/Harness.h"
#include "win32/Handles.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace bench {

namespace {

constexpr std::size_t kCharacters = 10'000;
constexpr double kLargestToMeasuring = 4;
constexpr double kLargestToMeasuringGoingBack = 6;

class Confirmation : public ConfirmationWindow {
public:
    Confirmation() : ConfirmationWindow(nullptr, L"bench", false)
    {
        m_strContent = L"content";
        CreateMaskLayer();
    }
    ~Confirmation() override { ::DestroyWindow(m_hWnd); }

    std::wstring Plain(std::wstring text)
    {
        ReContentText(text);
        return text;
    }
    std::wstring Link(std::wstring text)
    {
        m_bShowLink = true;
        ShowLinkWndReContentText(text);
        return text;
    }
    HDC MeasuringDc() { return m_pm.GetPaintDC(); }
    HFONT ContentFont() { return m_pm.GetFont(m_pContentLabel->GetFont()); }

protected:
    LPCTSTR GetWindowClassName() const override { return L"QuilletBenchConfirmation"; }
    DuiLib::CDuiString GetSkinFile() override
    {
        return L"<Window size=\"300,200\"><Label name=\"content\"/></Window>";
    }
};

// Every beginning of every line.
void MeasureLines(HDC dc, std::wstring_view lines)
{
    for (std::size_t at = 0; at < lines.size();) {
        const std::wstring_view line = lines.substr(at, lines.find(L'\r', at) - at);
        for (std::size_t length = 1; length <= line.size(); ++length) {
            SIZE extent{};
            ::GetTextExtentPoint32W(dc, line.data(), static_cast<int>(length), &extent);
        }
        at += line.size() + 1;
    }
}

std::wstring Words(std::wstring_view pattern, std::size_t characters)
{
    std::wstring words;
    while (words.size() < characters)
        words += pattern;
    words.resize(characters);
    return words;
}

} // namespace

void RunConfirmationBench(Report& report)
{
    Confirmation window;
    const std::wstring words = Words(L"Some words of a long content. ", kCharacters);
    // A word that fits into no line makes the search for a break go back to the first word.
    const std::wstring shortWords = Words(L"on it ", kCharacters);
    const std::wstring goingBack = shortWords + L" " + std::wstring(kCharacters / 50, L'x');
    const std::wstring link = L" <a><c #007DFF>see here</c></a>";

    const auto add = [&](const char* name, const std::wstring& lines, double bound,
                         const auto& breakLines) {
        const auto pair = TimeBoth(breakLines, [&] {
            const Quillet::SelectedObject font(window.MeasuringDc(), window.ContentFont());
            MeasureLines(window.MeasuringDc(), lines);
        });
        report.Add({name, pair.cost, pair.bare, bound});
    };
    add("break 10,000 characters into lines / measure the lines", window.Plain(words),
        kLargestToMeasuring, [&] { window.Plain(words); });
    add("the same before a word that fits into no line", window.Plain(shortWords),
        kLargestToMeasuringGoingBack, [&] { window.Plain(goingBack); });
    add("the same with a link", window.Link(shortWords + link), kLargestToMeasuringGoingBack,
        [&] { window.Link(goingBack + link); });
}

} // namespace bench
