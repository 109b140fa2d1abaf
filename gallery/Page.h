#pragma once

#include <quillet/quillet.h>

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace gallery {

class GalleryWindow;

// What a page adds to its skin: it fills and drives the controls of its demonstration.
//
// Every page is a controller of the main window for as long as the window lives, and hears all its
// messages. Its controls are there only while it is shown.
class Page : public UIController {
public:
    explicit Page(GalleryWindow& window) : m_window(window) {}
    virtual ~Page() = default;
    Page(const Page&) = delete;
    Page& operator=(const Page&) = delete;

    // Called by the main window when the controls have been built, and before they go.
    void Enter();
    void Leave();

    // What the main window passes to the page that is shown.
    virtual void Notify(DuiLib::TNotifyUI&) {} // notifications that have no hook
    virtual void MenuChosen(const DuiLib::MenuCmd&) {}
    virtual void LanguageChanged() {}
    virtual void ScaleChanged() {}

    // What opens beside the page, as menus and further windows do, for the tour's pictures.
    virtual int Scenes() const { return 0; }
    virtual void OpenScene(int /*scene*/) {}
    virtual void CloseScene() {}

protected:
    virtual void Show() {}
    virtual void Hide() {} // also when the window ends while the page is shown

    GalleryWindow& Window() const { return m_window; }
    bool IsShown() const { return m_shown; }

    // The demonstration's control of that name; null when the skin lacks it or it is another class.
    template <class Control>
    Control* Find(const wchar_t* name) const
    {
        return dynamic_cast<Control*>(FindControl(name));
    }
    // Puts a control that is made in code into the demonstration's container of that name; null
    // when the skin lacks it.
    template <class Control, class... Arguments>
    Control* AddTo(const wchar_t* container, Arguments&&... arguments) const
    {
        auto* const place = Find<DuiLib::CContainerUI>(container);
        if (!place)
            return nullptr;
        auto control = std::make_unique<Control>(std::forward<Arguments>(arguments)...);
        return place->Add(control.get()) ? control.release() : nullptr;
    }
    void SetText(const wchar_t* name, const wchar_t* text) const;
    bool IsChosen(const std::wstring& option) const;

    // Of the language that is shown.
    static std::wstring TextOf(const wchar_t* id);

    // Runs the handler at each click of the control until the page is left.
    void OnClickOf(const wchar_t* name, std::function<void()> handler);

private:
    DuiLib::CControlUI* FindControl(const wchar_t* name) const;

    GalleryWindow& m_window;
    bool m_shown = false;
    std::vector<DuiLib::CControlUI*> m_listened;
};

// A line in the list of pages: "NAME" names the text "page.NAME", its description
// "NAME.description" and the demonstration "demos/NAME.xml".
struct PageEntry {
    const wchar_t* name;
    std::shared_ptr<Page> (*make)(GalleryWindow&);
};

std::span<const PageEntry> Pages();

} // namespace gallery
