// Elementary functions made of the four basic operations alone, which every machine rounds alike.
// A machine's own library differs from the next one in the last place, and a sound with it: these
// give the same samples everywhere. Right to about 1e-15.
#pragma once

namespace kavo::sound {

double exponential(double x); // e^x
double logarithm(double x);   // natural, x > 0

// Of an angle in turns, -4 to 4.
double sine_of_turns(double turns);
double cosine_of_turns(double turns);

} // namespace kavo::sound
