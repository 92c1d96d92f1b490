#include "math/foundations/dump.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>

#include "math/vectors/vector3.h"

namespace {

TEST(Dump, TitleValueAndBlankLine) {
    std::ostringstream os;
    C3DVector3Tpl<double>(1, 2, 3).Dump("P", os);
    C3DVector3Tpl<float>(1, 2, 3).Dump(nullptr, os);  // no title line
    EXPECT_EQ(os.str(), "P\n( 1 2 3 )\n \n( 1 2 3 )\n \n");
}

TEST(Dump, NumbersFollowTheStreamFormatAndFloatsAreWidened) {
    std::ostringstream os;
    os << std::fixed << std::setprecision(2) << C3DVector3Tpl<float>(0.1f, -2, 3.5f);
    // The float 0.1 printed as a double shows its binary value.
    os << std::defaultfloat << std::setprecision(17) << C3DVector3Tpl<float>(0.1f, 0, 0);
    EXPECT_EQ(os.str(), "( 0.10 -2.00 3.50 )( 0.10000000149011612 0 0 )");
}

TEST(Dump, ExtractionReadsBareNumbersOnly) {
    C3DVector3Tpl<double> v(0, 0, 0);
    std::istringstream("4 5.5 -6") >> v;
    EXPECT_EQ(v, C3DVector3Tpl<double>(4, 5.5, -6));
    std::istringstream back("( 4 5.5 -6 )");  // what operator<< writes cannot be read back
    EXPECT_TRUE((back >> v).fail());
}

}  // namespace
