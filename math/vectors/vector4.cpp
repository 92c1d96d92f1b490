#include "math/vectors/vector4.h"

template <typename T>
void C3DVector4Tpl<T>::Dump(const char* title, std::ostream& os) const {
    F3DDumpValue(*this, title, os);
}

template class C3DVector4Tpl<float>;
template class C3DVector4Tpl<double>;
