#include "gallery/pages/Pages.h"

#include <string>

namespace gallery {

namespace {

using namespace DuiLib;

constexpr const wchar_t* kLanguages[] = {L"en-US", L"de-DE", L"zh-CN", L"th-TH"};

// The greeting in one language, read from that language's file alone.
CDuiString GreetingIn(const wchar_t* language)
{
    CMarkup file;
    if (!file.LoadFromFile((std::wstring(L"languages/") + language + L".xml").c_str()))
        return {};
    for (CMarkupNode node = file.GetRoot().GetChild(); node.IsValid(); node = node.GetSibling())
        if (CDuiString(L"texts.greeting") == node.GetAttributeValue(L"id"))
            return node.GetAttributeValue(L"value");
    return {};
}

// Answers every id that no language file knows.
class ClockTexts : public IQueryControlTextEx {
public:
    const wchar_t* QueryControlText(const wchar_t* id, const wchar_t*) override
    {
        if (CDuiString(L"texts.answer") != id)
            return nullptr;
        m_answer = L"answer " + std::to_wstring(++m_asked);
        return m_answer.c_str();
    }

private:
    std::wstring m_answer;
    int m_asked = 0;
};

class TextsPage : public Page {
public:
    using Page::Page;

protected:
    void Show() override
    {
        for (const wchar_t* language : kLanguages)
            SetText((std::wstring(L"text.") + language).c_str(), GreetingIn(language));

        auto& texts = *CResourceManagerEx::GetInstance();
        SetText(L"text.unknown", texts.GetText(L"texts.nobody-knows"));
        SetText(L"text.index", texts.GetImagePath(L"hills"));
        texts.SetTextQueryInterface(&m_clock);
        ShowAnswer();
        OnClickOf(L"text.reload", [this] {
            CResourceManagerEx::GetInstance()->ReloadText();
            ShowAnswer();
        });
    }
    void Hide() override { CResourceManagerEx::GetInstance()->SetTextQueryInterface(nullptr); }

private:
    void ShowAnswer()
    {
        SetText(L"text.query", CResourceManagerEx::GetInstance()->GetText(L"texts.answer"));
    }

    ClockTexts m_clock;
};

} // namespace

std::shared_ptr<Page> MakeTextsPage(GalleryWindow& window)
{
    return std::make_shared<TextsPage>(window);
}

} // namespace gallery
