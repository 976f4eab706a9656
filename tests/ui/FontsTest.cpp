// Which face a form gets where the one of its data does not serve.

#include "ui/Fonts.h"

#include <gtest/gtest.h>

#include "tests/support/ImportHook.h"
#include "tests/ui/FormFixture.h"
#include "ui/FontTable.h"

namespace vw::test {
namespace {

constexpr int kUsual = 96;
constexpr int kEnlarged = 120;

TEST(FaceOfAForm, Serves_ScalableFaceThatExists_ReturnsTrue) {
    const FaceInfo outline{.exists = true, .isRaster = false, .hasArabic = false};
    for (const int dpi : {kUsual, kEnlarged, 192}) {
        EXPECT_TRUE(Serves(outline, fonts::kButton.english, dpi));
        EXPECT_TRUE(Serves(outline, fonts::kButton.arabic, dpi));
    }
    EXPECT_FALSE(Serves(FaceInfo(), fonts::kButton.english, kUsual));
}

TEST(FaceOfAForm, Serves_RasterFaceEnlargedOrWithoutArabic_ReturnsFalse) {
    FaceInfo raster{.exists = true, .isRaster = true, .hasArabic = false};
    EXPECT_TRUE(Serves(raster, fonts::kButton.english, kUsual));
    EXPECT_FALSE(Serves(raster, fonts::kButton.english, kEnlarged));
    EXPECT_FALSE(Serves(raster, fonts::kButton.arabic, kUsual));
    raster.hasArabic = true;
    EXPECT_TRUE(Serves(raster, fonts::kButton.arabic, kUsual));
    EXPECT_FALSE(Serves(raster, fonts::kButton.arabic, kEnlarged));
}

// Wine lacks most faces. The system is made to answer that it has every one, Courier as a raster
// face; a font keeps the name of the face that it was made with.
int WINAPI HaveEveryFace(HDC, LPLOGFONTW wanted, FONTENUMPROCW note, LPARAM info, DWORD) {
    const TEXTMETRICW metrics{};
    const bool isRaster = std::wstring_view(wanted->lfFaceName) == L"Courier";
    return note(wanted, &metrics, isRaster ? RASTER_FONTTYPE : TRUETYPE_FONTTYPE, info);
}

TEST(FaceOfAForm, RasterFaceOnAnEnlargedScreen_IsReplacedByAScalableOne) {
    const ImportHook hook("EnumFontFamiliesExW", &HaveEveryFace);
    const FontData courier{L"Courier", 9};
    LOGFONTW used{};
    Fonts enlarged(kEnlarged);
    GetObjectW(enlarged.Get(courier), sizeof used, &used);
    EXPECT_STREQ(used.lfFaceName, L"Microsoft Sans Serif");
    Fonts usual(kUsual);
    GetObjectW(usual.Get(courier), sizeof used, &used);
    EXPECT_STREQ(used.lfFaceName, L"Courier");
}

/// A face of the forms, typed anew.
struct FaceRow {
    const wchar_t* control;
    const wchar_t* english;
    const wchar_t* arabic;
};

const FaceRow kMainFaces[]{
    {L"Label01", L"Arial", L"Traditional Arabic"},
    {L"cmbDestination", L"Times New Roman", L"Times New Roman"},
    {L"Label02", L"Arial", L"Traditional Arabic"},
    {L"lblBackages", L"Times New Roman", L"Times New Roman"},
    {L"lsvBackupList", L"Times New Roman", L"Times New Roman"},
    {L"lsvRestore1", L"Times New Roman", L"Times New Roman"},
    {L"lsvRestore2", L"Times New Roman", L"Times New Roman"},
    {L"lblFilter", L"Arial", L"Arial"},
};

const FaceRow kBusyFaces[]{
    {L"lblTitle", L"Times New Roman", L"Traditional Arabic"},
    {L"lblMsg", L"Times New Roman", L"Traditional Arabic"},
    {L"lblSubMsg", L"Times New Roman", L"Traditional Arabic"},
    {L"txtReport", L"Times New Roman", L"Arial"},
    {L"chkDontHide", L"Times New Roman", L"Traditional Arabic"},
    {L"cmdCancel", L"Times New Roman", L"Traditional Arabic"},
};

const FaceRow kAboutFaces[]{
    {L"lblTitle", L"Times New Roman", L"Traditional Arabic"},
    {L"lblD", L"Times New Roman", L"Traditional Arabic"},
    {L"cmdClose", L"MS Sans Serif", L"MS Sans Serif"},
};

class FacesOfForms : public testing::TestWithParam<Language> {
  protected:
    template <std::size_t Count>
    void Compare(const FormData& data, const FaceRow (&rows)[Count]) {
        const LoadedForm loaded(data, GetParam());
        for (const FaceRow& row : rows) {
            const std::wstring_view face =
                GetParam() == Language::Arabic ? row.arabic : row.english;
            const auto font = reinterpret_cast<HFONT>(
                SendMessageW(loaded.Control(row.control), WM_GETFONT, 0, 0));
            LOGFONTW used{};
            ASSERT_NE(GetObjectW(font, sizeof used, &used), 0) << Narrow(row.control);
            EXPECT_EQ(used.lfFaceName, face) << Narrow(row.control);
        }
    }

    const ImportHook hook{"EnumFontFamiliesExW", &HaveEveryFace};
};

TEST_P(FacesOfForms, MainWindow_HasItsFaces) { Compare(MainForm(), kMainFaces); }
TEST_P(FacesOfForms, BusyDialog_HasItsFaces) { Compare(BusyForm(), kBusyFaces); }
TEST_P(FacesOfForms, AboutBox_HasItsFaces) { Compare(AboutForm(), kAboutFaces); }

INSTANTIATE_TEST_SUITE_P(, FacesOfForms, testing::ValuesIn(kLanguages), NameOfLanguage);

}  // namespace
}  // namespace vw::test
