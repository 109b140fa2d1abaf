#pragma once

#include <quillet/quillet.h>

#include <stop_token>
#include <thread>

// The page: counts primes on a thread of its own, until it is through or told to stop.
class PageController : public UIController {
    // UIController:
    void OnInit() override;
    void OnDestroy() override;

    void Start();
    void Stop();
    bool IsStopMeant();
    void ShowRunning(bool running);
    void ShowProgress(int percent, int found);

    // On the worker's thread.
    void Count(std::stop_token stop);
    void Report(int percent, int found);

    std::jthread m_worker;
};
