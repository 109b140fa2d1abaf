#include <quillet/quillet.h>

#include "bench/Harness.h"

#include <list>
#include <vector>

namespace bench {

namespace {

using Quillet::IMessage;
using Quillet::Route;

constexpr int kReceivers = 1000;
constexpr double kLargestToBareCalls = 1.3;

// Receivers of two kinds, so that no compiler takes a call for that of the only one.
class Adding : public IMessage {
public:
    // IMessage:
    void OnRouteMessage(int msg, void* param) override { *static_cast<int*>(param) += msg; }
};

class Subtracting : public IMessage {
public:
    // IMessage:
    void OnRouteMessage(int msg, void* param) override { *static_cast<int*>(param) -= msg; }
};

} // namespace

void RunRouteBench(Report& report)
{
    std::vector<Adding> adding(kReceivers / 2);
    std::vector<Subtracting> subtracting(kReceivers / 2);
    Route route(*Route::GetInstance());
    std::list<IMessage*> bare;
    // In turn, so that the entries of both lists lie alike in memory.
    const auto add = [&](IMessage& receiver) {
        route.Register(&receiver);
        bare.push_back(&receiver);
    };
    for (auto& receiver : adding)
        add(receiver);
    for (auto& receiver : subtracting)
        add(receiver);
    int heard = 0;
    const auto broadcast = [&] { route.DispatchMessageW(1, &heard); };
    const auto calls = [&] {
        for (IMessage* const receiver : bare)
            receiver->OnRouteMessage(1, &heard);
    };
    const auto pair = LeastOfBoth(broadcast, calls);
    report.Add({"broadcast to 1000 receivers / 1000 virtual calls over a list", pair.cost,
                pair.bare, kLargestToBareCalls});
}

} // namespace bench
