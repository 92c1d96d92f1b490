// Feeds arbitrary numbers to the scalar functions and the three-component vector, and arbitrary
// text to its extraction operator, checking the invariants every input must keep.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>

#include "math/math3d.h"

namespace {

double Take(const std::uint8_t*& data, std::size_t& size) {
    double v = 0;
    if (size >= sizeof v) {
        std::memcpy(&v, data, sizeof v);
        data += sizeof v;
        size -= sizeof v;
    }
    return v;
}

void Check(bool condition) {
    if (!condition) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const double a = Take(data, size), b = Take(data, size), c = Take(data, size);

    const double angle = F3DArcSinCos(a, b);
    Check(std::isnan(angle) || (angle >= -3.141592653589793 && angle <= 3.141592653589793));
    const int order = F3DCompareEpsilon(a, b, std::fabs(c));
    Check(order >= -1 && order <= 1);
    F3DGetNearestDiscreteValue(a, b, c);
    Check(F3DIsValidNumber(a) == std::isfinite(a));

    C3DVector3Tpl<double> v(a, b, c);
    const C3DVector3Tpl<double> before = v;
    if (v.Normalize() == 0) {
        Check(std::memcmp(&v, &before, sizeof v) == 0);  // unchanged on refusal
    } else {
        Check(std::fabs(v.GetLength() - 1) < 1e-9 || !std::isfinite(before.GetSquaredLength()));
    }
    double alpha = 0, beta = 0;
    before.DecomposeIn2Basis(C3DVector3Tpl<double>(b, c, a), C3DVector3Tpl<double>(c, a, b),
                             alpha, beta);
    double u, w, z;
    GetBarycentricCoords(before, C3DVector3Tpl<double>(c, a, b), C3DVector3Tpl<double>(b, c, a),
                         C3DVector3Tpl<double>(a, a, c), u, w, z);
    Check(Get2DPntSide(before, v, C3DVector3Tpl<double>(b, c, a)) == 1);

    std::istringstream in(text);
    C3DVector3Tpl<float> read(0, 0, 0);
    in >> read;
    return 0;
}
