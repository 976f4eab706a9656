// Which face a form gets where the one of its data does not serve.

#include "ui/Fonts.h"

#include <gtest/gtest.h>

#include "ui/FontTable.h"

namespace vw::test {
namespace {

constexpr int kUsual = 96;
constexpr int kEnlarged = 120;

TEST(FaceOfAForm, IsTheGivenOneWhereItExistsAndIsScalable) {
    const FaceInfo outline{.exists = true, .isRaster = false, .hasArabic = false};
    for (const int dpi : {kUsual, kEnlarged, 192}) {
        EXPECT_TRUE(Serves(outline, fonts::kButton.english, dpi));
        EXPECT_TRUE(Serves(outline, fonts::kButton.arabic, dpi));
    }
    EXPECT_FALSE(Serves(FaceInfo(), fonts::kButton.english, kUsual));
}

TEST(FaceOfAForm, IsNoRasterFaceThatWouldBeEnlargedOrLacksArabic) {
    FaceInfo raster{.exists = true, .isRaster = true, .hasArabic = false};
    EXPECT_TRUE(Serves(raster, fonts::kButton.english, kUsual));
    EXPECT_FALSE(Serves(raster, fonts::kButton.english, kEnlarged));
    EXPECT_FALSE(Serves(raster, fonts::kButton.arabic, kUsual));
    raster.hasArabic = true;
    EXPECT_TRUE(Serves(raster, fonts::kButton.arabic, kUsual));
    EXPECT_FALSE(Serves(raster, fonts::kButton.arabic, kEnlarged));
}

// Wine brings a raster face of this name with it.
TEST(FaceOfAForm, OfARasterFaceOnAnEnlargedScreen_IsScalable) {
    const FontData courier{L"Courier", 9};
    const FaceInfo face = InfoOf(courier.face);
    if (!face.exists || !face.isRaster) GTEST_SKIP() << "this system has no raster face Courier";
    LOGFONTW used{};
    Fonts enlarged(kEnlarged);
    GetObjectW(enlarged.Get(courier), sizeof used, &used);
    EXPECT_STRNE(used.lfFaceName, L"Courier");
    Fonts usual(kUsual);
    GetObjectW(usual.Get(courier), sizeof used, &used);
    EXPECT_STREQ(used.lfFaceName, L"Courier");
}

}  // namespace
}  // namespace vw::test
