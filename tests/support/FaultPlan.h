#pragma once

#include <memory>

namespace test {

// What the system can refuse.
enum class Resource { Window, DeviceContext, Bitmap, Font, Region, Timer, Memory };

// Makes the system refuse one request of a kind, as it does when it has run out: the modules of
// this project get null and ERROR_NOT_ENOUGH_MEMORY, or std::bad_alloc. One at a time.
//
// Only what the thread that made the plan asks for between Start and Stop counts.
class FaultPlan {
public:
    explicit FaultPlan(Resource resource);
    ~FaultPlan();
    FaultPlan(const FaultPlan&) = delete;
    FaultPlan& operator=(const FaultPlan&) = delete;

    // Begins to count; the request of that number is refused, the first one being 1. None at 0.
    void Start(int refused = 0);

    // Ends the counting; gives how many requests there were.
    int Stop();

    // Blocks of memory that the modules got since the plan was made, less those that they freed;
    // of all threads, also outside Start and Stop.
    static int HeldBlocks();

private:
    struct Redirections;
    std::unique_ptr<Redirections> m_redirections;
};

} // namespace test
