#pragma once

#include "Core/UIBase.h"
#include "win32/Handles.h"

namespace DuiLib {

class CEditUI;
class CPaintManagerUI;

// The native window of an edit control that has the focus.
//
// It deletes itself with its window. A handler of the owner's notifications may close it, delete
// the owner or destroy the parent window: nothing ends while one of its messages is being handled.
class CNativeEdit final : public CWindowWnd {
public:
    // Null when there is no window for it. Follows the owner's look, and shows its text.
    static CNativeEdit* Open(CEditUI& owner);

    // Lets go of the owner at once; the window ends now, or with the message that it is handling.
    void Close();

    // Gives the window the keyboard when its parent has it.
    void TakeKeyboard();

    // Takes over place, font, and what the owner's setters change.
    void FollowLook();
    void FollowSettings();

    // Changes by the program.
    void ShowText(LPCTSTR text);
    void Select(long start, long end);
    void ReplaceSelection(LPCTSTR text);

    CDuiString Text() const;
    void GetSelection(long& start, long& end) const;

    // The mouse, where the parent window got its message. The first press after opening keeps the
    // selection when all is selected: true when it was taken.
    bool Press(UINT message, WPARAM keys, POINT point);
    void Drag(WPARAM keys, POINT point);
    void Release(POINT point);

protected:
    // CWindowWnd:
    LPCTSTR GetWindowClassName() const override;
    LPCTSTR GetSuperClassName() const override;
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnFinalMessage(HWND window) override;

private:
    // Keeps the object while it is in use.
    class Use {
    public:
        explicit Use(CNativeEdit& edit) : m_edit(edit) { ++m_edit.m_nUses; }
        ~Use() { m_edit.EndUse(); }
        Use(const Use&) = delete;
        Use& operator=(const Use&) = delete;

    private:
        CNativeEdit& m_edit;
    };

    explicit CNativeEdit(CEditUI& owner);
    ~CNativeEdit() = default;

    void EndUse();
    bool IsOpen() const { return m_pOwner && !m_bCloseAsked; }
    void LetGoOfOwner(HWND window);
    void FollowFont();
    void FollowPlace();
    LRESULT Respond(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT PassOn(UINT message, WPARAM wParam, LPARAM lParam);
    void NoteChange();
    void AfterMessage(UINT message);
    LRESULT PressKey(WPARAM key, LPARAM lParam);
    LRESULT GiveColours(HDC dc);
    bool ShowsTip() const;
    void PaintTip(HDC dc);
    void ShowInLayeredWindow(UINT message);
    void PrintCaret(HDC dc);
    void PasteDigits();
    void GiveBackMouse();
    LPARAM ToClient(POINT point) const;

    CEditUI* m_pOwner;
    Quillet::UniqueFont m_pFont; // its own: the manager's may be rebuilt at any time
    LOGFONT m_LogFont;
    Quillet::UniqueBrush m_pBrush;
    COLORREF m_clrBrush;
    RECT m_rcPlace;   // in the parent
    RECT m_rcVisible; // the part of it that the parents leave
    int m_nUses;
    bool m_bEnded;
    bool m_bCloseAsked;
    bool m_bQuiet;     // the program makes the changes
    bool m_bChanged;   // the user did, in the message being handled
    bool m_bWasEmpty;  // the hint is shown
    bool m_bUntouched; // neither key nor mouse since it opened
    bool m_bPressed;   // by a press that the parent window got
    bool m_bLayered;
};

} // namespace DuiLib
