// Materials, lights and lighting models. Definitions have numbers from 1 up, separate for each kind, and are shared by
// all windows; what is bound belongs to the current window. A vertex is lit when a normal was given after the last
// colour and a material and a lighting model are bound:
//   emission + ambient x (the model's ambient + that of every light)
//   + for each light, its colour x (diffuse x max(n.l, 0) + specular x max(n.h, 0) ^ shininess, where n.l > 0)
// with l towards the light and h halfway between l and the eye, both of unit length; alpha is the material's.
// The eye is at infinity. With a two-sided model the normal is turned round for polygons that show their back.
#pragma once

namespace gl {

enum DefinitionKind { DEFMATERIAL = 0, DEFLIGHT = 1, DEFLMODEL = 2 };

// Tokens of property lists, each followed by its values.
constexpr float LMNULL = 0; // ends every list
// Materials: three colours and one number each.
constexpr float EMISSION = 1, AMBIENT = 2, DIFFUSE = 3, SPECULAR = 4, SHININESS = 5, ALPHA = 7;
// Lights: three values; four values x y z w, w = 0 for a direction towards the light at infinity. AMBIENT too.
constexpr float LCOLOR = 101, POSITION = 102;
// Lighting models: AMBIENT (three values) and one number, not 0 for two sides.
constexpr float TWOSIDE = 204;

// Defines (or changes) a number's definition: the properties in the list are set, others keep their values; a new
// material is grey (ambient 0.2, diffuse 0.8, no specular, no emission, alpha 1), a new light white along z, a new
// model ambient 0.2. `count` is the number of floats in the list, 0 when it ends with LMNULL. A null list restores the
// values of a new one. Unknown tokens and numbers below 1 are reported on standard error, and the rest of the list is
// ignored.
void lmdef(int kind, int index, int count, const float* properties);

enum BindingTarget {
    MATERIAL = 1000,
    LMODEL = 1001,
    LIGHT0 = 1100, // the first of 8 light sources
    LIGHT1,
    LIGHT2,
    LIGHT3,
    LIGHT4,
    LIGHT5,
    LIGHT6,
    LIGHT7
};

// Binds definition `index` (0: nothing). A light's position goes through the viewing matrix of this moment. A number
// never defined binds nothing.
void lmbind(int target, int index);
// The bound number.
int getlmbind(int target);

} // namespace gl
