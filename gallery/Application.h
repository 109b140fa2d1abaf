#pragma once

namespace gallery {

// What lasts as long as the program: resources, texts and the toolkit's own state.
class Application {
public:
    Application();
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;
};

} // namespace gallery
