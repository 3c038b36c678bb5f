// A screen in memory only.
#include "platform/clock.h"
#include "platform/compositor.h"
#include "platform/display.h"
#include "platform/graphics_context.h"
#include "platform/input.h"
#include "platform/surface.h"

namespace gl {

namespace {

class HeadlessDisplay : public Display {
  public:
    bool IsHeadless() const override { return true; }

    void TakeInput() override {}

    void Wait(long long microseconds, bool) override { AdvanceClock(microseconds); }

    // Nobody looks: the screen is composed when a picture of it is asked for.
    void Present() override {}

    void WarpPointer(int, int) override {}

    void ShowPointer(const PointerShape*) override {}

    void SetTitle(const std::string&) override {}

    void SetClipboard(const std::string& text) override { Text = text; }

    std::string Clipboard() override { return Text; }

    void RingBell() override {}

  private:
    std::string Text;
};

} // namespace

std::unique_ptr<Display> OpenHeadlessDisplay(int width, int height, double scale, std::string& error) {
    SetDrawingScale(scale > 0 ? scale : 1);
    if (!OpenHeadlessContext(error) || !AdoptScreenPixels(width, height, error))
        return nullptr;
    const ContentSize screen = ScreenSize();
    PointerMoved(screen.Width / 2, screen.Height / 2);
    return std::make_unique<HeadlessDisplay>();
}

} // namespace gl
