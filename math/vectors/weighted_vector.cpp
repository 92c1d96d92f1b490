#include "math/vectors/weighted_vector.h"

void C3DVectorw::Dump(const char* title, std::ostream& os) const { F3DDumpValue(*this, title, os); }
