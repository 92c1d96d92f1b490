#include "math/foundations/dump.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>

#include "math/vectors/vector3.h"

namespace {

TEST(Dump, TitleValueAndBlankLine) {
    std::ostringstream os;
    C3DVector3Tpl<double>(1, 2, 3).Dump("P", os);
    EXPECT_EQ(os.str(), "P\n( 1 2 3 )\n \n");
}

TEST(Dump, NullTitleWritesNoTitleLine) {
    std::ostringstream os;
    C3DVector3Tpl<float>(1, 2, 3).Dump(nullptr, os);
    EXPECT_EQ(os.str(), "( 1 2 3 )\n \n");
}

TEST(Dump, NumbersFollowTheStreamFormatAndFloatsAreWidened) {
    std::ostringstream os;
    os << std::fixed << std::setprecision(2) << C3DVector3Tpl<float>(0.1f, -2, 3.5f);
    EXPECT_EQ(os.str(), "( 0.10 -2.00 3.50 )");
    std::ostringstream wide;
    wide << std::setprecision(17) << C3DVector3Tpl<float>(0.1f, 0, 0);
    // The float 0.1 printed as a double shows its exact binary value.
    EXPECT_EQ(wide.str(), "( 0.10000000149011612 0 0 )");
}

TEST(Dump, ExtractionReadsBareNumbersOnly) {
    C3DVector3Tpl<double> v(0, 0, 0);
    std::istringstream in("4 5.5 -6");
    in >> v;
    EXPECT_EQ(v, C3DVector3Tpl<double>(4, 5.5, -6));

    // What operator<< writes cannot be read back.
    std::ostringstream out;
    out << v;
    std::istringstream back(out.str());
    C3DVector3Tpl<double> w(7, 7, 7);
    back >> w;
    EXPECT_TRUE(back.fail());
}

}  // namespace
