#pragma once

// What the windows and operations of this folder need of others; each is skipped when null.
struct StructureSlots {
    /// Puts the selected polygons of the current object, with what hangs on them, into the selected sub-object.
    void (*AttachSelectedPolys)() = nullptr;
    /// 1 when exactly one polygon of the current object is selected; otherwise the user has been told.
    int (*APolygonIsSelected)() = nullptr;
    /// The model has been given a name by the program: a file of that name must not be replaced without a question.
    void (*ModelWasRenamed)() = nullptr;
};

extern StructureSlots TheStructureSlots;
