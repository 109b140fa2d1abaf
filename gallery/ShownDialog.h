#pragma once

#include <quillet/quillet.h>

#include <type_traits>
#include <utility>
#include <vector>

namespace gallery {

class GalleryWindow;

// Gives a window whose skin has been built the scale and the font of the main one, whatever its
// monitor asks for, and sets the process back to that scale: a new window sets it to its own.
// Returns the DPI.
unsigned TakeLookOf(DuiLib::CPaintManagerUI& main, DuiLib::CPaintManagerUI& window);

// The dialogs that a page has open over the main window.
class OpenDialogs {
public:
    explicit OpenDialogs(const GalleryWindow& main) : m_main(main) {}
    OpenDialogs(const OpenDialogs&) = delete;
    OpenDialogs& operator=(const OpenDialogs&) = delete;

    HWND Owner() const;
    DuiLib::CPaintManagerUI& MainManager() const;

    void Add(HWND dialog) { m_dialogs.push_back(dialog); }
    void Remove(HWND dialog) { std::erase(m_dialogs, dialog); }
    bool IsEmpty() const { return m_dialogs.empty(); }

    void PlaceSideBySide() const; // in rows, from the top left of the screen
    void CloseAll();              // at once, modal ones too

private:
    const GalleryWindow& m_main;
    std::vector<HWND> m_dialogs;
};

// A dialog that looks like the main window and is closed with its page. One of DuiLib deletes
// itself when its window ends; the others belong to who makes them.
template <class Dialog>
class Shown : public Dialog {
public:
    template <class... Arguments>
    explicit Shown(OpenDialogs& open, Arguments&&... arguments)
        : Dialog(std::forward<Arguments>(arguments)...), m_open(open)
    {
    }

    // What the PopMessageBox of the dialogs does: the code of a modal one, 1 of another.
    template <class... Arguments>
    static unsigned PopModal(OpenDialogs& open, Arguments&&... arguments)
    {
        return Dialog::RunModal(new Shown(open, std::forward<Arguments>(arguments)...),
                                open.Owner());
    }
    template <class... Arguments>
    static unsigned PopModeless(OpenDialogs& open, Arguments&&... arguments)
    {
        return Dialog::RunModeless(new Shown(open, std::forward<Arguments>(arguments)...),
                                   open.Owner());
    }

    void OnFinalMessage(HWND window) override
    {
        m_open.Remove(window);
        Dialog::OnFinalMessage(window);
        if constexpr (kIsToBeDeleted)
            delete this;
    }

protected:
    void InitWindow() override
    {
        m_open.Add(this->m_hWnd);
        this->m_uDpi = TakeLookOf(m_open.MainManager(), this->m_pm);
        Dialog::InitWindow();
    }

private:
    static constexpr bool kIsToBeDeleted = std::is_base_of_v<DuiLib::DialogWindow, Dialog> &&
                                           !std::is_same_v<Dialog, DuiLib::UIMessageBox>;

    OpenDialogs& m_open; // of the page, which outlives the window
};

} // namespace gallery
