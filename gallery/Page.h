#pragma once

#include <quillet/quillet.h>

#include <memory>
#include <span>

namespace gallery {

class GalleryWindow;

// What a page adds to its skin: it fills and drives the controls of its demonstration.
//
// A page lives as long as it is shown; its controls live at least as long.
class Page {
public:
    explicit Page(GalleryWindow& window) : m_window(window) {}
    virtual ~Page() = default;
    Page(const Page&) = delete;
    Page& operator=(const Page&) = delete;

    virtual void Show() {} // once, when the controls are there
    virtual void Notify(DuiLib::TNotifyUI&) {}
    virtual void LanguageChanged() {}
    virtual void ScaleChanged() {}
    virtual void Traced() {} // the window wrote a line of its trace

    // What opens beside the page, as menus and further windows do, for the tour's pictures.
    virtual int Scenes() const { return 0; }
    virtual void OpenScene(int /*scene*/) {}
    virtual void CloseScene() {}

protected:
    GalleryWindow& Window() const { return m_window; }

    // The demonstration's control of that name; null when the skin lacks it or it is another class.
    template <class Control>
    Control* Find(const wchar_t* name) const
    {
        return dynamic_cast<Control*>(FindControl(name));
    }
    void SetText(const wchar_t* name, const wchar_t* text) const;

private:
    DuiLib::CControlUI* FindControl(const wchar_t* name) const;

    GalleryWindow& m_window;
};

// A line in the list of pages: "NAME" names the text "page.NAME", its description
// "NAME.description" and the demonstration "demos/NAME.xml".
struct PageEntry {
    const wchar_t* name;
    std::unique_ptr<Page> (*make)(GalleryWindow&);
};

std::span<const PageEntry> Pages();

} // namespace gallery
