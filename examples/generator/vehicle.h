#pragma once

struct Object;

/// A small car on z = 0, its middle at the origin, its front towards +x: one object of the parts body, wheels, trim,
/// lights and glass.
Object* BuildVehicle(const char* name);
