#include "gooey/file_preview.h"

#include "gooey/draw.h"
#include "gooey/file_selector_state.h"
#include "gooey/fonts.h"
#include "gooey/gadget_skeleton.h"
#include "platform/drawing.h"

FilePicture (*MakeFilePicture)(const char* path);

namespace {

constexpr int Border = 4, DescriptionBelow = 22;

struct Place {
    int X, Y;
};

/// What was shown last, kept while it is shown again.
FilePicture Shown;
std::string ShownPath;

void Follow(const FileSelector& selector) {
    const std::string path = selector.Name[0] ? PathIn(selector.Directory, selector.Name) : "";
    if (path == ShownPath)
        return;
    ShownPath = path;
    Shown = path.empty() || IsDirectory(path) ? FilePicture() : MakeFilePicture(path.c_str());
}

void DrawPreview(Gadget* gadget) {
    const Place place = GadgetData<Place>(gadget);
    Follow(CurrentSelector());
    SetColour(White);
    DrawLoweredBox(place.X - Border, place.Y - Border, FilePictureSize + 2 * Border, FilePictureSize + 2 * Border);
    if (Shown.Width && Shown.Height) {
        const int x = place.X + (FilePictureSize - Shown.Width) / 2, y = place.Y + (FilePictureSize - Shown.Height) / 2;
        gl::lrectwrite(x, y, x + Shown.Width - 1, y + Shown.Height - 1, Shown.Pixels.data());
    }
    gl::cpack(White);
    SmallCentre(place.X, place.Y - DescriptionBelow, FilePictureSize, Shown.Description.c_str());
}

void DescribePreview(const Gadget* gadget, GadgetDescription& description) {
    const Place place = GadgetData<Place>(gadget);
    description.Label = "Preview";
    description.Box = {place.X, place.Y, FilePictureSize, FilePictureSize};
    description.Text = Shown.Description;
}

constexpr GadgetKind PreviewKind = {"custom", DescribePreview, nullptr, nullptr};

} // namespace

void AddFilePreview(int x, int y) {
    ShownPath.clear();
    Shown = {};
    Gadget* gadget = CreateGadget<Place>();
    GadgetData<Place>(gadget) = {x, y};
    gadget->DrawFn = DrawPreview;
    gadget->Kind = &PreviewKind;
}
