#include <UIlib.h>

#include "support/FaultPlan.h"
#include "support/ObjectCounters.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <new>
#include <string>

using namespace DuiLib;

namespace {

std::string g_calls;

bool First(void*)
{
    g_calls += "1";
    return true;
}

bool Second(void*)
{
    g_calls += "2";
    return true;
}

bool Refuse(void*)
{
    g_calls += "x";
    return false;
}

class Receiver {
public:
    virtual ~Receiver() = default;
    virtual bool OnOne(void* param)
    {
        g_calls += "a";
        last = param;
        return true;
    }
    virtual bool OnTwo(void*)
    {
        g_calls += "b";
        return true;
    }
    bool OnPlain(void*)
    {
        g_calls += "p";
        return true;
    }
    void* last = nullptr;
};

struct Padding {
    virtual ~Padding() = default;
    int padding = 0;
};

// The receiver is not at the start of this object.
class Derived : public Padding, public Receiver {
public:
    bool OnOne(void*) override
    {
        g_calls += "A";
        return true;
    }
};

// Runs whatever it is given.
class Script {
public:
    bool Run(void* param)
    {
        g_calls += "s";
        return action ? action(param) : true;
    }
    std::function<bool(void*)> action;
};

class DelegateTest : public testing::Test {
protected:
    DelegateTest() { g_calls.clear(); }
};

} // namespace

TEST_F(DelegateTest, CallsFunctionsAndMembersWithTheArgument)
{
    Receiver receiver;
    int argument = 0;
    EXPECT_TRUE(MakeDelegate(&First)(nullptr));
    EXPECT_FALSE(MakeDelegate(&Refuse)(nullptr));
    EXPECT_TRUE(MakeDelegate(&receiver, &Receiver::OnOne)(&argument));
    EXPECT_EQ(g_calls, "1xa");
    EXPECT_EQ(receiver.last, &argument);
}

TEST_F(DelegateTest, CallsOverridesOfObjectsWithSeveralBases)
{
    Derived derived;
    MakeDelegate(&derived, &Receiver::OnOne)(nullptr);
    MakeDelegate(&derived, &Receiver::OnPlain)(nullptr);
    MakeDelegate(&derived, &Derived::OnOne)(nullptr);
    EXPECT_EQ(g_calls, "ApA");
}

TEST_F(DelegateTest, EqualsMeansTheSameObjectAndFunction)
{
    Receiver one;
    Receiver two;
    const auto delegate = MakeDelegate(&one, &Receiver::OnPlain);
    EXPECT_TRUE(delegate.Equals(MakeDelegate(&one, &Receiver::OnPlain)));
    EXPECT_FALSE(delegate.Equals(MakeDelegate(&two, &Receiver::OnPlain)));
    EXPECT_FALSE(delegate.Equals(MakeDelegate(&First)));
    EXPECT_TRUE(MakeDelegate(&First).Equals(MakeDelegate(&First)));
    EXPECT_FALSE(MakeDelegate(&First).Equals(MakeDelegate(&Second)));
}

TEST_F(DelegateTest, TwoVirtualMembersOfOneObjectAreNotEqual)
{
    Receiver receiver;
    EXPECT_FALSE(MakeDelegate(&receiver, &Receiver::OnOne)
                     .Equals(MakeDelegate(&receiver, &Receiver::OnTwo)));
    EXPECT_TRUE(MakeDelegate(&receiver, &Receiver::OnTwo)
                    .Equals(MakeDelegate(&receiver, &Receiver::OnTwo)));
}

namespace {

// Two bases whose only virtual member is at the same place of their tables: as members of Both
// they differ only behind the first word of the member pointer.
struct LeftBase {
    virtual ~LeftBase() = default;
    virtual bool Left(void*) { return First(nullptr); }
    int left = 0;
};

struct RightBase {
    virtual ~RightBase() = default;
    virtual bool Right(void*) { return Second(nullptr); }
    int right = 0;
};

struct Both : LeftBase, RightBase {};

} // namespace

TEST_F(DelegateTest, ComparesTheWholeMemberPointer)
{
    Both both;
    const CDelegate<Both, Both> left(&both, &Both::Left);
    const CDelegate<Both, Both> right(&both, &Both::Right);
    EXPECT_FALSE(left.Equals(right));
    EXPECT_TRUE(right.Equals(CDelegate<Both, Both>(&both, &Both::Right)));

    CEventSource source;
    source += left;
    source += right;
    EXPECT_TRUE(source(nullptr));
    EXPECT_EQ(g_calls, "12");
    source -= right;
    source(nullptr);
    EXPECT_EQ(g_calls, "121");
}

TEST_F(DelegateTest, CopiesCallTheSameFunction)
{
    Receiver receiver;
    const std::unique_ptr<CDelegateBase> copy(MakeDelegate(&receiver, &Receiver::OnTwo).Copy());
    (*copy)(nullptr);
    EXPECT_TRUE(copy->Equals(MakeDelegate(&receiver, &Receiver::OnTwo)));
    EXPECT_EQ(g_calls, "b");
}

TEST_F(DelegateTest, SourceCallsInOrderAndKeepsEachDelegateOnce)
{
    Receiver receiver;
    CEventSource source;
    EXPECT_FALSE(static_cast<bool>(source));
    EXPECT_TRUE(source(nullptr));
    source += &Second;
    source += MakeDelegate(&receiver, &Receiver::OnOne);
    source += &First;
    source += &Second;
    EXPECT_TRUE(static_cast<bool>(source));
    EXPECT_TRUE(source(nullptr));
    EXPECT_EQ(g_calls, "2a1");
}

TEST_F(DelegateTest, TheFirstFalseEndsTheWalk)
{
    CEventSource source;
    source += &First;
    source += &Refuse;
    source += &Second;
    EXPECT_FALSE(source(nullptr));
    EXPECT_EQ(g_calls, "1x");
}

TEST_F(DelegateTest, RemovesTheEqualOne)
{
    Receiver receiver;
    CEventSource source;
    source += MakeDelegate(&receiver, &Receiver::OnOne);
    source += MakeDelegate(&receiver, &Receiver::OnTwo);
    source += &First;
    source -= MakeDelegate(&receiver, &Receiver::OnOne);
    source -= &Second;
    source -= &First;
    source(nullptr);
    EXPECT_EQ(g_calls, "b");
    source.Clear();
    EXPECT_FALSE(static_cast<bool>(source));
}

TEST_F(DelegateTest, ACopyOfASourceHasDelegatesOfItsOwn)
{
    auto original = std::make_unique<CEventSource>();
    *original += &First;
    *original += &Second;
    CEventSource copy(*original);
    CEventSource assigned;
    assigned += &Refuse;
    assigned = *original;
    *original -= &First;
    original.reset();

    copy(nullptr);
    EXPECT_EQ(g_calls, "12");
    assigned(nullptr);
    EXPECT_EQ(g_calls, "1212");
    const CEventSource& same = assigned;
    assigned = same;
    assigned(nullptr);
    EXPECT_EQ(g_calls, "121212");
}

TEST_F(DelegateTest, ADelegateMayRemoveItselfDuringTheWalk)
{
    CEventSource source;
    Script script;
    script.action = [&](void*) {
        source -= MakeDelegate(&script, &Script::Run);
        return true;
    };
    source += MakeDelegate(&script, &Script::Run);
    source += &First;
    source += &Second;
    source(nullptr);
    EXPECT_EQ(g_calls, "s12");
    source(nullptr);
    EXPECT_EQ(g_calls, "s1212");
}

TEST_F(DelegateTest, OneRemovedDuringTheWalkIsNotCalled)
{
    CEventSource source;
    Script script;
    script.action = [&](void*) {
        source -= &First;
        return true;
    };
    source += &Second;
    source += MakeDelegate(&script, &Script::Run);
    source += &First;
    source(nullptr);
    EXPECT_EQ(g_calls, "2s");
}

TEST_F(DelegateTest, AnEarlierOneRemovedDuringTheWalkSkipsNobody)
{
    CEventSource source;
    Script script;
    script.action = [&](void*) {
        source -= &First;
        return true;
    };
    source += &First;
    source += MakeDelegate(&script, &Script::Run);
    source += &Second;
    source(nullptr);
    EXPECT_EQ(g_calls, "1s2");
}

TEST_F(DelegateTest, OneAddedDuringTheWalkIsCalledTheNextTime)
{
    CEventSource source;
    Script script;
    script.action = [&](void*) {
        source += &Second;
        return true;
    };
    source += MakeDelegate(&script, &Script::Run);
    source(nullptr);
    EXPECT_EQ(g_calls, "s");
    source(nullptr);
    EXPECT_EQ(g_calls, "ss2");
}

TEST_F(DelegateTest, AnInnerWalkMayClearTheSource)
{
    CEventSource source;
    Script script;
    int depth = 0;
    script.action = [&](void*) {
        if (++depth == 1)
            source(nullptr);
        else
            source.Clear();
        return true;
    };
    source += MakeDelegate(&script, &Script::Run);
    source += &First;
    EXPECT_TRUE(source(nullptr));
    EXPECT_EQ(g_calls, "ss");
    EXPECT_FALSE(static_cast<bool>(source));
}

TEST_F(DelegateTest, ADelegateMayDestroyTheSource)
{
    auto source = std::make_unique<CEventSource>();
    Script script;
    script.action = [&](void*) {
        source.reset();
        return true;
    };
    *source += MakeDelegate(&script, &Script::Run);
    *source += &First;
    EXPECT_TRUE((*source)(nullptr));
    EXPECT_EQ(g_calls, "s");
}

TEST_F(DelegateTest, SourcesFreeTheirDelegates)
{
    Script script;
    const auto work = [&] {
        CEventSource source;
        script.action = [&source](void*) {
            source.Clear();
            source += &First;
            return true;
        };
        source += MakeDelegate(&script, &Script::Run);
        source += &Second;
        source(nullptr);
        const CEventSource copy(source);
        source -= &First;
        script.action = nullptr;
        g_calls.clear();
    };
    work();
    const int before = test::HeapBlocks();
    for (int i = 0; i < 20; ++i)
        work();
    EXPECT_EQ(test::HeapBlocks(), before);
}

TEST_F(DelegateTest, AListenerThatThrowsLeavesTheSourceInOrder)
{
    CEventSource source;
    Script script;
    script.action = [](void*) -> bool { throw std::bad_alloc(); };
    source += MakeDelegate(&script, &Script::Run);
    source += &Second;
    EXPECT_THROW(source(nullptr), std::bad_alloc);

    // No call is running, so what is removed is gone at once and the others are called.
    source -= MakeDelegate(&script, &Script::Run);
    g_calls.clear();
    EXPECT_TRUE(source(nullptr));
    EXPECT_EQ(g_calls, "2");
}

TEST_F(DelegateTest, ASourceEndsWithoutAnyMemory)
{
    auto source = std::make_unique<CEventSource>();
    *source += &First;
    *source += &Second;
    test::FaultPlan plan(test::Resource::Memory);
    plan.Start();
    source.reset();
    EXPECT_EQ(plan.Stop(), 0);
}
