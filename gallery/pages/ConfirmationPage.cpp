#include "gallery/GalleryWindow.h"
#include "gallery/ShownDialog.h"
#include "gallery/pages/Pages.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace gallery {

namespace {

using namespace DuiLib;

constexpr int kLargestLimit = 4;

enum Scene { kShort, kLong, kLink, kSceneCount };

// Dims the main window and keeps input from it.
class DimLayer : public CWindowWnd {
public:
    ~DimLayer() { Uncover(); }

    void Cover(HWND parent)
    {
        RECT place{};
        ::GetWindowRect(parent, &place);
        if (!Create(parent, L"", WS_POPUP | WS_DISABLED, WS_EX_LAYERED | WS_EX_TOOLWINDOW, place))
            return;
        m_hCovered = parent;
        ::EnableWindow(m_hCovered, FALSE);
        ::SetLayeredWindowAttributes(m_hWnd, 0, kOpacity, LWA_ALPHA);
        ::ShowWindow(m_hWnd, SW_SHOWNOACTIVATE);
    }
    void Uncover()
    {
        if (const HWND covered = std::exchange(m_hCovered, nullptr))
            ::EnableWindow(covered, TRUE);
        if (::IsWindow(m_hWnd))
            ::DestroyWindow(m_hWnd);
    }

protected:
    LPCTSTR GetWindowClassName() const override { return L"QuilletGalleryDimLayer"; }
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        if (message != WM_ERASEBKGND && message != WM_PRINTCLIENT)
            return CWindowWnd::HandleMessage(message, wParam, lParam);
        RECT client{};
        ::GetClientRect(m_hWnd, &client);
        const auto dc = reinterpret_cast<HDC>(wParam);
        ::SetDCBrushColor(dc, kColour);
        ::FillRect(dc, &client, static_cast<HBRUSH>(::GetStockObject(DC_BRUSH)));
        return TRUE;
    }

private:
    static constexpr BYTE kOpacity = 110;
    static constexpr COLORREF kColour = RGB(0x52, 0x60, 0x6D);

    HWND m_hCovered = nullptr;
};

class Question : public ConfirmationWindow {
public:
    using ConfirmationWindow::ConfirmationWindow;

    // The layer owns the question, which stands above it then, and is closed together with it.
    void SetMaskLayer(DimLayer& layer)
    {
        m_pMaskLayer = &layer;
        m_hMaskParent = layer.GetHWND();
    }

protected:
    LPCTSTR GetWindowClassName() const override { return L"QuilletGalleryConfirmation"; }
    CDuiString GetSkinFile() override
    {
        return m_bShowLink ? L"common/ConfirmationLink.xml" : L"common/Confirmation.xml";
    }
};

class ConfirmationPage : public Page {
public:
    using Page::Page;

    int Scenes() const override { return kSceneCount; }
    void OpenScene(int scene) override
    {
        constexpr const wchar_t* kTexts[] = {L"confirmation.short.text", L"confirmation.long.text",
                                             L"confirmation.long.link"};
        m_scene = MakeQuestion(TextOf(kTexts[scene]), scene == kLink);
        if (scene == kShort) {
            m_layer.Cover(m_open.Owner());
            m_scene->SetMaskLayer(m_layer);
        }
        m_scene->CreateMaskLayer();
        m_scene->CenterWindow();
        m_scene->CWindowWnd::ShowWindow();
    }
    void CloseScene() override
    {
        m_open.CloseAll();
        m_scene.reset();
        m_layer.Uncover();
    }

protected:
    void Show() override
    {
        OnClickOf(L"confirmation.open", [this] { Ask(); });
    }
    void Hide() override { CloseScene(); }

private:
    int ChosenLimit() const
    {
        int limit = 0;
        while (limit < kLargestLimit && !IsChosen(L"confirmation.lines." + std::to_wstring(limit)))
            ++limit;
        return limit;
    }

    std::wstring ChosenText(bool hasLink) const
    {
        if (IsChosen(L"confirmation.short"))
            return TextOf(hasLink ? L"confirmation.short.link" : L"confirmation.short.text");
        return TextOf(hasLink ? L"confirmation.long.link" : L"confirmation.long.text");
    }

    using ShownQuestion = Shown<Question>;
    std::unique_ptr<ShownQuestion> MakeQuestion(const std::wstring& text, bool hasLink)
    {
        auto question = std::make_unique<ShownQuestion>(m_open, m_open.Owner(),
                                                        TextOf(L"page.confirmation"), false);
        question->ReSetShowAllContent({text, TextOf(L"confirmation.yes"),
                                       TextOf(L"confirmation.no"), TextOf(L"confirmation.header"),
                                       L""});
        question->m_bShowLink = hasLink;
        return question;
    }

    void Ask()
    {
        const bool hasLink = IsChosen(L"confirmation.link");
        const auto question = MakeQuestion(ChosenText(hasLink), hasLink);
        question->SetMaxLineNums(ChosenLimit());
        DimLayer layer;
        if (IsChosen(L"confirmation.mask")) {
            layer.Cover(m_open.Owner());
            question->SetMaskLayer(layer);
        }
        question->ShowWindow();

        std::wstring result = L"IsConfirmation: ";
        result += question->IsConfirmation() ? L"true" : L"false";
        result += L"  m_nLineCount: " + std::to_wstring(question->m_nLineCount);
        SetText(L"confirmation.result", result.c_str());
    }

    OpenDialogs m_open{Window()};
    DimLayer m_layer;
    std::unique_ptr<ShownQuestion> m_scene;
};

} // namespace

std::shared_ptr<Page> MakeConfirmationPage(GalleryWindow& window)
{
    return std::make_shared<ConfirmationPage>(window);
}

} // namespace gallery
