#include "quillet/quillet.h"
#include "tests/quillet/frame/FreshProcess.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <limits>
#include <malloc.h>
#include <memory>
#include <new>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace test {
namespace {

using Quillet::IMessage;
using Quillet::Route;

static_assert(std::is_abstract_v<IMessage>);
static_assert(!std::is_default_constructible_v<Route>);
static_assert(std::is_copy_constructible_v<Route> && std::is_copy_assignable_v<Route>);
static_assert(std::is_same_v<decltype(&Route::GetInstance), Route* (*)()>);
static_assert(std::is_same_v<decltype(&Route::Register), void (Route::*)(IMessage*)>);
static_assert(std::is_same_v<decltype(&Route::RegisterService), void (Route::*)(IMessage*)>);
static_assert(std::is_same_v<decltype(&IMessage::OnRouteMessage), void (IMessage::*)(int, void*)>);

// Notes its name for each message that it hears, and does something then.
class Receiver : public IMessage {
public:
    Receiver(std::string& log, std::string name) : m_log(log), m_name(std::move(name)) {}

    std::function<void()> onHearing;
    std::vector<std::pair<int, void*>> heard;

    // IMessage:
    void OnRouteMessage(int msg, void* param) override
    {
        m_log += m_name + " ";
        heard.emplace_back(msg, param);
        if (onHearing)
            std::exchange(onHearing, nullptr)();
    }

private:
    std::string& m_log;
    std::string m_name;
};

// The one route keeps what it is given until the process ends, so the tests fill a copy of it while
// it is empty.
class RouteTest : public testing::Test {
protected:
    std::string log;
    Receiver client1{log, "C1"}, client2{log, "C2"}, service1{log, "S1"}, service2{log, "S2"};
    Route route{*Route::GetInstance()};

    std::string Broadcast(int msg = 1)
    {
        log.clear();
        route.DispatchMessageW(msg, nullptr);
        return log;
    }
};

TEST_F(RouteTest, GetInstanceAnswersTheSameRouteEachTime)
{
    Route* const first = Route::GetInstance();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(Route::GetInstance(), first);
}

TEST_F(RouteTest, ABroadcastWithoutReceiversDoesNothing)
{
    EXPECT_EQ(Broadcast(), "");
}

TEST_F(RouteTest, ServicesHearBeforeClientsWhoeverCameFirst)
{
    route.Register(&client1);
    route.RegisterService(&service1);
    route.Register(&client2);
    EXPECT_EQ(Broadcast(), "S1 C1 C2 ");
}

TEST_F(RouteTest, EachListHearsInTheOrderOfItsRegistration)
{
    route.RegisterService(&service2);
    route.Register(&client2);
    route.Register(&client1);
    route.RegisterService(&service1);
    EXPECT_EQ(Broadcast(), "S2 S1 C2 C1 ");
}

TEST_F(RouteTest, NumberAndParameterReachEveryReceiverUnchanged)
{
    route.RegisterService(&service1);
    route.Register(&client1);
    int payload = 0;
    const std::vector<std::pair<int, void*>> sent{
        {0, nullptr},
        {-1, &payload},
        {std::numeric_limits<int>::min(), &log},
        {std::numeric_limits<int>::max(), reinterpret_cast<void*>(~std::uintptr_t{0})},
    };
    for (const auto& [msg, param] : sent)
        route.DispatchMessageW(msg, param);
    EXPECT_EQ(service1.heard, sent);
    EXPECT_EQ(client1.heard, sent);
}

TEST_F(RouteTest, WhatAReceiverDoesToTheParameterIsSeenByTheNext)
{
    route.RegisterService(&service1);
    route.Register(&client1);
    int answers = 0;
    service1.onHearing = [&] { ++*static_cast<int*>(service1.heard.back().second); };
    client1.onHearing = [&] { *static_cast<int*>(client1.heard.back().second) *= 10; };
    route.DispatchMessageW(1, &answers);
    EXPECT_EQ(answers, 10);
}

TEST_F(RouteTest, AClientThatIsRegisteredTwiceHearsTwice)
{
    route.Register(&client1);
    route.Register(&client2);
    route.Register(&client1);
    EXPECT_EQ(Broadcast(), "C1 C2 C1 ");
}

TEST_F(RouteTest, AServiceThatIsRegisteredTwiceHearsTwice)
{
    route.RegisterService(&service1);
    route.RegisterService(&service1);
    EXPECT_EQ(Broadcast(), "S1 S1 ");
}

TEST_F(RouteTest, OneThatIsServiceAndClientHearsTwiceFirstAsService)
{
    route.Register(&client1);
    route.Register(&service1);
    route.RegisterService(&service1);
    EXPECT_EQ(Broadcast(), "S1 C1 S1 ");
}

TEST_F(RouteTest, AClientRegisteredByAClientHearsTheRunningBroadcast)
{
    route.Register(&client1);
    client1.onHearing = [this] { route.Register(&client2); };
    EXPECT_EQ(Broadcast(), "C1 C2 ");
}

TEST_F(RouteTest, AServiceRegisteredByAServiceHearsTheRunningBroadcast)
{
    route.RegisterService(&service1);
    route.Register(&client1);
    service1.onHearing = [this] { route.RegisterService(&service2); };
    EXPECT_EQ(Broadcast(), "S1 S2 C1 ");
}

TEST_F(RouteTest, AClientRegisteredByAServiceHearsTheRunningBroadcast)
{
    route.RegisterService(&service1);
    service1.onHearing = [this] { route.Register(&client1); };
    EXPECT_EQ(Broadcast(), "S1 C1 ");
}

TEST_F(RouteTest, AServiceRegisteredByAClientHearsOnlyTheNextBroadcast)
{
    route.Register(&client1);
    client1.onHearing = [this] { route.RegisterService(&service1); };
    EXPECT_EQ(Broadcast(), "C1 ");
    EXPECT_EQ(Broadcast(), "S1 C1 ");
}

TEST_F(RouteTest, AClientThatRegistersItselfAgainHearsTheRunningBroadcastAgain)
{
    route.Register(&client1);
    route.Register(&client2);
    client1.onHearing = [this] { route.Register(&client1); };
    EXPECT_EQ(Broadcast(), "C1 C2 C1 ");
}

TEST_F(RouteTest, ABroadcastWithinABroadcastRunsAtOnceAndWhole)
{
    route.RegisterService(&service1);
    route.Register(&client1);
    route.Register(&client2);
    client1.onHearing = [this] { route.DispatchMessageW(2, nullptr); };
    EXPECT_EQ(Broadcast(), "S1 C1 S1 C1 C2 C2 ");
    ASSERT_EQ(client2.heard.size(), 2u);
    EXPECT_EQ(client2.heard[0].first, 2);
    EXPECT_EQ(client2.heard[1].first, 1);
}

TEST_F(RouteTest, ACopyTakesBothListsAndGoesItsOwnWay)
{
    route.RegisterService(&service1);
    route.Register(&client1);
    Route copy(route);
    route.Register(&client2);
    copy.DispatchMessageW(1, nullptr);
    EXPECT_EQ(log, "S1 C1 ");
    copy.RegisterService(&service2);
    EXPECT_EQ(Broadcast(), "S1 C1 C2 ");
}

TEST_F(RouteTest, AssigningReplacesBothLists)
{
    route.RegisterService(&service1);
    route.Register(&client1);
    Route other(*Route::GetInstance());
    other.RegisterService(&service2);
    other.Register(&client2);
    other = route;
    other.DispatchMessageW(1, nullptr);
    EXPECT_EQ(log, "S1 C1 ");
}

TEST_F(RouteTest, ARouteDoesNotDeleteItsReceivers)
{
    struct Dying : Receiver {
        Dying(std::string& log, int& deaths) : Receiver(log, "D"), m_deaths(deaths) {}
        ~Dying() { ++m_deaths; }
        int& m_deaths;
    };
    int deaths = 0;
    const auto receiver = std::make_unique<Dying>(log, deaths);
    {
        Route ending(route);
        ending.Register(receiver.get());
        ending.RegisterService(receiver.get());
    }
    EXPECT_EQ(deaths, 0);
    receiver->OnRouteMessage(1, nullptr);
    EXPECT_EQ(log, "D ");
}

TEST_F(RouteTest, IMessageHasNoVirtualDestructor)
{
    EXPECT_FALSE(std::has_virtual_destructor_v<IMessage>);
    EXPECT_EQ(sizeof(IMessage), sizeof(void*)); // holds nothing but its table
}

TEST_F(RouteTest, OnRouteMessageIsTheFirstEntryOfItsTable)
{
    using Entry = void (*)(IMessage*, int, void*);
    IMessage* const receiver = &client1;
    (**reinterpret_cast<Entry**>(receiver))(receiver, 5, &log);
    EXPECT_EQ(client1.heard, (std::vector<std::pair<int, void*>>{{5, &log}}));
}

TEST_F(RouteTest, IMessageIsCopiedAndMovedAsNothingAtAll)
{
    struct Numbered : IMessage {
        explicit Numbered(int number) : value(number) {}
        void OnRouteMessage(int msg, void*) override { value = msg; }
        int value;
    };
    Numbered first(1);
    Numbered copied(first);
    Numbered moved(std::move(copied));
    Numbered assigned(2);
    assigned = moved;
    moved = std::move(assigned);
    route.Register(&moved);
    route.DispatchMessageW(9, nullptr);
    EXPECT_EQ(first.value, 1);
    EXPECT_EQ(moved.value, 9);
}

TEST_F(RouteTest, RouteHasAVirtualDestructor)
{
    EXPECT_TRUE(std::has_virtual_destructor_v<Route>);
}

// The name with which it is exported, also where the system's headers rename no DispatchMessage.
TEST_F(RouteTest, TheBroadcastKeepsTheSuffixInItsName)
{
    void (Route::*const broadcast)(int, void*) = &Route::DispatchMessageW;
    route.Register(&client1);
    (route.*broadcast)(3, nullptr);
    EXPECT_EQ(log, "C1 ");
}

template <class T>
concept Forgets = requires(T route, IMessage* receiver)
{
    route.Unregister(receiver);
}
|| requires(T route, IMessage* receiver)
{
    route.UnRegister(receiver);
}
|| requires(T route, IMessage* receiver)
{
    route.UnregisterService(receiver);
}
|| requires(T route, IMessage* receiver)
{
    route.Remove(receiver);
};

TEST_F(RouteTest, NothingUnregistersAReceiver)
{
    EXPECT_FALSE(Forgets<Route>);
    route.Register(&client1);
    EXPECT_EQ(Broadcast(), "C1 ");
    EXPECT_EQ(Broadcast(), "C1 ");
}

constexpr int kAfterwards = 7; // the process went on

bool Failed(int code)
{
    return code != 0 && code != kAfterwards;
}

// The broadcast got as far as this receiver: it was not the registration that failed.
void TellWhenHeard(Receiver& receiver)
{
    receiver.onHearing = [] { std::fputs("heard\n", stderr); };
}

TEST_F(RouteTest, ANullClientFailsTheProcess)
{
    EXPECT_EXIT(
        {
            TellWhenHeard(service1);
            route.RegisterService(&service1);
            route.Register(nullptr);
            route.DispatchMessageW(1, nullptr);
            std::_Exit(kAfterwards);
        },
        Failed, "heard");
}

TEST_F(RouteTest, ANullServiceFailsTheProcess)
{
    EXPECT_EXIT(
        {
            TellWhenHeard(service1);
            route.RegisterService(&service1);
            route.RegisterService(nullptr);
            route.DispatchMessageW(1, nullptr);
            std::_Exit(kAfterwards);
        },
        Failed, "heard");
}

TEST_F(RouteTest, AReceiverWhoseMemoryIsGoneFailsTheProcess)
{
    EXPECT_EXIT(
        {
            void* const page =
                ::VirtualAlloc(nullptr, sizeof(Receiver), MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
            auto* const receiver = new (page) Receiver(log, "gone");
            route.Register(receiver);
            receiver->~Receiver();
            ::VirtualFree(page, 0, MEM_RELEASE);
            route.DispatchMessageW(1, nullptr);
            std::_Exit(kAfterwards);
        },
        Failed, "");
}

TEST(RouteProcessTest, TheOneRouteStartsEmptyAndKeepsWhatItIsGiven)
{
    EXPECT_EXIT(RunAndExit([] {
                    std::string log;
                    Receiver client(log, "C");
                    Receiver service(log, "S");
                    Route::GetInstance()->DispatchMessageW(1, nullptr);
                    EXPECT_EQ(log, "");
                    Route::GetInstance()->Register(&client);
                    Route::GetInstance()->RegisterService(&service);
                    Route::GetInstance()->DispatchMessageW(1, nullptr);
                    EXPECT_EQ(log, "S C ");
                }),
                testing::ExitedWithCode(0), "");
}

// The library's own objects of the process end in the reverse of the order in which they began, so
// a route that ended with the process would do so before the queue, which was touched earlier.
constexpr auto kNoBlock = static_cast<std::size_t>(-1);

TEST(RouteProcessTest, TheOneRouteStillWorksWhileTheProcessEnds)
{
    static constexpr UINT kHeard = 5;
    static constexpr UINT kUnheard = 6;
    static constexpr UINT kFreed = 8;
    struct Last : IMessage {
        void OnRouteMessage(int, void*) override
        {
            ::TerminateProcess(::GetCurrentProcess(), kHeard);
        }
    };
    EXPECT_EXIT(
        {
            auto& queue = DuiLib::UIMainQueue::getInstance();
            static Last receiver;
            static Route* const route = Route::GetInstance();
            route->Register(&receiver);
            queue.dispatch([atTheEnd = std::shared_ptr<void>(&receiver, [](void*) {
                                if (_msize(route) == kNoBlock)
                                    ::TerminateProcess(::GetCurrentProcess(), kFreed);
                                route->DispatchMessageW(1, nullptr);
                                ::TerminateProcess(::GetCurrentProcess(), kUnheard);
                            })] {});
            std::_Exit(kAfterwards);
        },
        testing::ExitedWithCode(kHeard), "");
}

} // namespace
} // namespace test
