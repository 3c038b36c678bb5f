#pragma once

#include "store/records.h"

// Drawings of a model are kept and replayed until something that they show has changed. Changes of geometry, of
// connections and of selections are noticed by their cache flags; whoever changes anything else that shows on a polygon
// (material, texture, texture coordinates, lighting, flags) says so here.

/// The polygon looks different.
void AppearanceChanged(const Polygon* polygon);
/// All polygons of the object may look different.
void AppearanceChanged(Object* object);
/// Every object of every file may look different, as after a change of what materials or textures stand for.
void EveryAppearanceChanged();

// The same for what is derived from a whole object. The store tells of these itself.

/// CleanUpObject has made derived data anew: geometry, order or polygons may differ.
void ObjectWasCleanedUp(Object* object);
/// The list of the object's selected polygons has been made anew, and that of its selected and loose vertices.
void PolygonSelectionWasMade(Object* object);
void VertexSelectionWasMade(Object* object);
/// Vertices have been placed anew in a motion (store/motion.h).
void VerticesHaveMoved(Object* object);
/// The record is about to be released.
void SubObjectIsFreed(SubObject* subObject);
void ObjectIsFreed(Object* object);
void MaterialIsFreed(Material* material);

/// Who keeps something that a change outdates: told of each change. Null: not interested.
struct AppearanceSlots {
    void (*PolygonChanged)(const Polygon* polygon) = nullptr;
    void (*ObjectChanged)(Object* object) = nullptr;
    void (*EverythingChanged)() = nullptr;
    void (*ObjectCleanedUp)(Object* object) = nullptr;
    void (*PolygonSelectionMade)(Object* object) = nullptr;
    void (*VertexSelectionMade)(Object* object) = nullptr;
    void (*SubObjectFreed)(SubObject* subObject) = nullptr;
    void (*ObjectFreed)(Object* object) = nullptr;
    void (*MaterialFreed)(Material* material) = nullptr;
    void (*VerticesMoved)(Object* object) = nullptr;
};

/// For the rest of the run; each listener once.
void ListenToAppearance(const AppearanceSlots& listener);
