#pragma once

#include "gooey/event_loop.h"
#include "gooey/pointer.h"
#include "gooey/window.h"
#include "interaction/drag_box.h"
#include "interaction/selection.h"
#include "platform/matrices.h"
#include "store/clean_up.h"
#include "store/ring_model.h"
#include "views/display_flags.h"
#include "views/grid.h"
#include "views/traversal.h"
#include "views/view_transform.h"
#include "views/work_area.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

/// A window of 400 x 300 pixels without a screen, and views whose pixels are known beforehand.
class SelectionTest : public RingModel {
  protected:
    static constexpr int Width = 400, Height = 300;

    void SetUp() override {
        RingModel::SetUp();
        Reset();
        TestWindow.Width = Width;
        TestWindow.Height = Height;
        CurrentWindow = &TestWindow;
        gl::mmode(gl::MVIEWING);
    }

    void TearDown() override {
        Reset();
        CurrentWindow = nullptr;
        RingModel::TearDown();
    }

    /// From the front, ten pixels a metre: a model point (x, y, z) appears at (200 + 10 x, 150 + 10 z), the deeper the
    /// larger y is.
    static View FrontView() {
        View view{};
        view.Valid = 1;
        view.Direction = 4;
        view.Zoom = 1;
        view.ViewMatrix = view.GridMatrix = IdentityMatrix;
        view.Projection = IdentityMatrix;
        view.Projection[0][0] = 20.0 / Width;
        view.Projection[1][1] = 20.0 / Height;
        return view;
    }

    /// Pixels of a metre that lies a metre before the eye, in the 3D view.
    static inline const double FocalLength = Height / 2 / std::tan(20 * DegreesToRadians);

    /// The 3D view from a place, looking along y.
    static View EyeView(double x, double y, double z) {
        View view = FrontView();
        view.Perspective = 1;
        view.Projection[0][0] = FocalLength * 2 / Width;
        view.Projection[1][1] = FocalLength * 2 / Height;
        view.Projection[2][2] = view.Projection[2][3] = -1;
        view.Projection[3][2] = -0.2;
        view.Projection[3][3] = 0;
        view.ViewMatrix = TranslationMatrix(-x, -y, -z);
        return view;
    }

    /// The polygon under a pixel.
    static Polygon* PickAt(View view, int x, int y) {
        MouseX = x;
        MouseY = y;
        return SelectSinglePolygon(&view);
    }

    static Vertex* PickVertexAt(View view, int x, int y) {
        MouseX = x;
        MouseY = y;
        return SelectSingleVertex(&view);
    }

    static void SetDragBox(int left, int right, int bottom, int top) {
        DragLeft = left;
        DragRight = right;
        DragBottom = bottom;
        DragTop = top;
    }

    /// An upright quadrilateral facing the front view, at depth y.
    static Polygon* Upright(double left, double right, double bottom, double top, double y, Polygon* parent = nullptr) {
        return AddFace({{left, y, bottom}, {right, y, bottom}, {right, y, top}, {left, y, top}}, parent);
    }

    static inline Window TestWindow{};

  private:
    static void Reset() {
        LeftShift = RightShift = LeftAlt = RightAlt = LeftCtrl = RightCtrl = 0;
        MaskPolygonSelections = MaskTextureSelections = 0;
        Backface = HideSubObjects = StructureEditorIsOpen = HideScene = HidingVertices = 0;
        TextureOn = 1;
        ObjectIsolated = 1;
        NoSceneSelection = 1;
        WorkAreaGizmo = nullptr;
    }
};
