#include "gallery/GalleryWindow.h"
#include "gallery/ShownDialog.h"
#include "gallery/pages/Pages.h"

#include <string>

namespace gallery {

namespace {

using namespace DuiLib;

constexpr unsigned kTypes = 7;
constexpr unsigned kPlainType = 1;
constexpr unsigned kTypeWithCheckBox = 4;

// Each as many as stand side by side on a screen of 1920 by 1080 pixels at 150 percent.
enum Scene { kFirstTypes, kFirstRest, kSecondTypes, kSecondRest, kSceneCount };
constexpr unsigned kFirstTypeOfRest = 6;

// What a message box is opened with.
struct Box {
    bool isFirstGeneration = true;
    unsigned type = kPlainType;
    std::wstring caption{};
    std::wstring text{};
    std::wstring okText{};
    std::wstring cancelText{};
    bool showCaption = true;
    bool isModal = false;
};

const wchar_t* ButtonOf(unsigned code)
{
    switch (code) {
    case IDOK:
        return L"btn_ok";
    case IDCANCEL:
        return L"btn_cancel";
    case IDCLOSE:
        return L"btn_close";
    default:
        return L"PopMessageBox";
    }
}

class MessageBoxesPage : public Page {
public:
    using Page::Page;

    void LanguageChanged() override
    {
        // What the user has written stays.
        auto* const caption = Find<CEditUI>(L"message-boxes.caption");
        if (caption && caption->GetText() == m_sampleCaption.c_str())
            FillCaption();
        for (const wchar_t* const name : {L"message-boxes.ok", L"message-boxes.cancel"}) {
            if (auto* const edit = Find<CEditUI>(name))
                edit->SetTipValue(TextOf(L"message-boxes.of-type").c_str());
        }
    }

    int Scenes() const override { return kSceneCount; }
    void OpenScene(int scene) override
    {
        const bool isFirstGeneration = scene == kFirstTypes || scene == kFirstRest;
        if (scene == kFirstTypes || scene == kSecondTypes)
            OpenTypes(isFirstGeneration);
        else
            OpenRest(isFirstGeneration);
        m_open.PlaceSideBySide();
    }
    void CloseScene() override { m_open.CloseAll(); }

protected:
    void Show() override
    {
        OnClickOf(L"message-boxes.open", [this] { OpenChosen(); });
        FillCaption();
        LanguageChanged();
    }
    void Hide() override { CloseScene(); }

private:
    void FillCaption()
    {
        m_sampleCaption = TextOf(L"message-boxes.caption.sample");
        SetText(L"message-boxes.caption", m_sampleCaption.c_str());
    }

    std::wstring Written(const wchar_t* name) const
    {
        const auto* const edit = Find<CEditUI>(name);
        return edit ? edit->GetText().GetData() : L"";
    }

    Box Chosen() const
    {
        Box box;
        box.isFirstGeneration = IsChosen(L"message-boxes.first");
        box.type = 0;
        while (box.type + 1 < kTypes &&
               !IsChosen(L"message-boxes.type." + std::to_wstring(box.type)))
            ++box.type;
        box.caption = Written(L"message-boxes.caption");
        box.text = TextOf(IsChosen(L"message-boxes.short") ? L"message-boxes.short.text"
                                                           : L"message-boxes.long.text");
        box.okText = Written(L"message-boxes.ok");
        box.cancelText = Written(L"message-boxes.cancel");
        box.showCaption = IsChosen(L"message-boxes.with-caption");
        box.isModal = IsChosen(L"message-boxes.modal");
        return box;
    }

    void OpenChosen()
    {
        const Box box = Chosen();
        m_isChecked = false;
        const unsigned code = Open(box);
        std::wstring result = box.isModal ? ButtonOf(code) : L"PopMessageBox";
        result += L": " + std::to_wstring(code);
        if (box.isModal && box.type == kTypeWithCheckBox)
            result += m_isChecked ? L"  checkbox_tip: true" : L"  checkbox_tip: false";
        SetText(L"message-boxes.result", result.c_str());
    }

    unsigned Open(const Box& box)
    {
        return box.isFirstGeneration ? Open<UIMessageBox>(box) : Open<UIIMessageBox>(box);
    }
    template <class MessageBox>
    unsigned Open(const Box& box)
    {
        const auto pop = [&](auto popBox) {
            return popBox(m_open, m_open.Owner(), box.caption, box.text, box.okText, box.cancelText,
                          box.type, &m_isChecked, box.showCaption, box.isModal);
        };
        using ShownBox = Shown<MessageBox>;
        return box.isModal ? pop([](auto&&... with) { return ShownBox::PopModal(with...); })
                           : pop([](auto&&... with) { return ShownBox::PopModeless(with...); });
    }

    void OpenTypes(bool isFirstGeneration)
    {
        Box box{.isFirstGeneration = isFirstGeneration,
                .caption = TextOf(L"message-boxes.caption.sample"),
                .text = TextOf(L"message-boxes.short.text")};
        for (box.type = 0; box.type < kFirstTypeOfRest; ++box.type)
            Open(box);
    }

    // The last type, one without caption, and long texts.
    void OpenRest(bool isFirstGeneration)
    {
        Box box{.isFirstGeneration = isFirstGeneration,
                .type = kFirstTypeOfRest,
                .caption = TextOf(L"message-boxes.caption.sample"),
                .text = TextOf(L"message-boxes.short.text")};
        Open(box);
        box.type = kPlainType;
        box.showCaption = false;
        Open(box);

        box.text = TextOf(L"message-boxes.long.text");
        Open(box);
        box.showCaption = true;
        Open(box);
        box.type = kTypeWithCheckBox;
        Open(box);
        // The first generation's buttons are for Chinese.
        if (isFirstGeneration)
            return;
        box.okText = TextOf(L"message-boxes.own-ok");
        box.cancelText = TextOf(L"message-boxes.own-cancel");
        Open(box);
    }

    OpenDialogs m_open{Window()};
    bool m_isChecked = false; // of the box opened last
    std::wstring m_sampleCaption;
};

} // namespace

std::shared_ptr<Page> MakeMessageBoxesPage(GalleryWindow& window)
{
    return std::make_shared<MessageBoxesPage>(window);
}

} // namespace gallery
