#pragma once

#include "support/ImportHook.h"
#include "win32/GdiPlus.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace test {

// The calls of Quillet.dll into GDI+ that draw, in their order and with their arguments, such as
// "DrawLineI G P 100 50 110 50". They are carried out. A pointer is "*", a null one "null", the
// graphics "G", a pen "P", a brush "B", an image "I", attributes "A"; colours are hexadecimal.
class GdiplusCalls {
public:
    using Lines = std::vector<std::string>;

    GdiplusCalls()
    {
        using namespace Gdiplus;
        State() = {};
#define QUILLET_RECORD(function)                                                                   \
    Record<__LINE__>("Gdip" #function, static_cast<decltype(DllExports::Gdip##function)*>(nullptr))
        QUILLET_RECORD(CreateFromHDC);
        QUILLET_RECORD(GetImageGraphicsContext);
        QUILLET_RECORD(DeleteGraphics);
        QUILLET_RECORD(SetInterpolationMode);
        QUILLET_RECORD(SetSmoothingMode);
        QUILLET_RECORD(SetTextRenderingHint);
        QUILLET_RECORD(ResetWorldTransform);
        QUILLET_RECORD(TranslateWorldTransform);
        QUILLET_RECORD(CreatePen1);
        QUILLET_RECORD(DeletePen);
        QUILLET_RECORD(CreateSolidFill);
        QUILLET_RECORD(DeleteBrush);
        QUILLET_RECORD(DrawLineI);
        QUILLET_RECORD(DrawRectangleI);
        QUILLET_RECORD(FillRectangleI);
        QUILLET_RECORD(CreateImageAttributes);
        QUILLET_RECORD(SetImageAttributesColorMatrix);
        QUILLET_RECORD(DisposeImageAttributes);
        QUILLET_RECORD(DrawImageRectRectI);
        QUILLET_RECORD(CloneBitmapAreaI);
#undef QUILLET_RECORD
    }
    ~GdiplusCalls()
    {
        State() = {};
    }
    GdiplusCalls(const GdiplusCalls&) = delete;
    GdiplusCalls& operator=(const GdiplusCalls&) = delete;

    // The calls since the last time.
    static Lines Take()
    {
        return std::exchange(State().lines, {});
    }

    // What was drawn on last.
    static Gdiplus::GpGraphics* Graphics()
    {
        return State().graphics;
    }

    // From now on the function fails and does nothing.
    static void Refuse(const char* function)
    {
        State().refused = function;
    }

private:
    struct Recording {
        Lines lines;
        Gdiplus::GpGraphics* graphics = nullptr;
        std::string refused;
    };
    static Recording& State()
    {
        static Recording recording;
        return recording;
    }

    static std::string Pointer(const void* pointer, const char* name)
    {
        return pointer ? name : "null";
    }
    template <class... Values>
    static std::string Print(const char* format, Values... values)
    {
        char text[64];
        std::snprintf(text, sizeof text, format, values...);
        return text;
    }
    static std::string TextOf(Gdiplus::GpGraphics* graphics)
    {
        State().graphics = graphics;
        return Pointer(graphics, "G");
    }
    static std::string TextOf(Gdiplus::GpPen* pen)
    {
        return Pointer(pen, "P");
    }
    static std::string TextOf(Gdiplus::GpBrush* brush)
    {
        return Pointer(brush, "B");
    }
    static std::string TextOf(Gdiplus::GpImage* image)
    {
        return Pointer(image, "I");
    }
    static std::string TextOf(const Gdiplus::GpImageAttributes* attributes)
    {
        return Pointer(attributes, "A");
    }
    static std::string TextOf(Gdiplus::GpImageAttributes* attributes)
    {
        return Pointer(attributes, "A");
    }
    static std::string TextOf(const Gdiplus::ColorMatrix* matrix)
    {
        if (!matrix)
            return "null";
        std::string text = "(";
        for (const auto& row : matrix->m)
            for (const float entry : row)
                text += (text.size() > 1 ? " " : "") + Print("%g", entry);
        return text + ')';
    }
    static std::string TextOf(HDC dc)
    {
        return Print("%p", static_cast<void*>(dc));
    }
    static std::string TextOf(Gdiplus::ARGB colour)
    {
        return Print("%08lX", static_cast<unsigned long>(colour));
    }
    static std::string TextOf(float number)
    {
        return Print("%g", static_cast<double>(number));
    }
    template <class Value>
    static std::string TextOf(Value value)
    {
        if constexpr (std::is_pointer_v<Value>)
            return Pointer(reinterpret_cast<const void*>(value), "*");
        else
            return std::to_string(static_cast<int>(value));
    }

    template <int id, class Function>
    struct StandIn;
    template <int id, class... Arguments>
    struct StandIn<id, Gdiplus::GpStatus WINGDIPAPI(Arguments...)> {
        using Function = Gdiplus::GpStatus WINGDIPAPI(Arguments...);
        static inline Function* original = nullptr;
        static inline std::string name;

        static Gdiplus::GpStatus WINGDIPAPI Call(Arguments... arguments)
        {
            std::string line = name.substr(4);
            ((line += ' ' + TextOf(arguments)), ...);
            State().lines.push_back(line);
            return State().refused == name ? Gdiplus::GenericError : original(arguments...);
        }
    };

    template <int id, class Function>
    void Record(const char* name, Function*)
    {
        using Of = StandIn<id, Function>;
        Of::name = name;
        m_hooks.push_back(
            std::make_unique<ImportHook>(L"Quillet.dll", "gdiplus.dll", name, &Of::Call));
        Of::original = m_hooks.back()->template Original<Function>();
        EXPECT_TRUE(*m_hooks.back()) << name;
    }

    std::vector<std::unique_ptr<ImportHook>> m_hooks;
};

} // namespace test
