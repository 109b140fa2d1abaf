#pragma once

#include <quillet/quillet.h>

// Goes through the page by itself: starts the work, has it go on under the dialog, and stops it.
class Demonstration : public UIController {
public:
    bool HasSucceeded() const { return m_step == Step::Done; }

private:
    enum class Step { AskToStop, Answer, Close, Done };

    // UIController:
    void OnInit() override;

    void TakeStep();
    bool HasProgressed();

    Step m_step = Step::AskToStop;
    int m_percent = 0;
    DuiLib::CDuiString m_found;
};
