#include "tests/platform/ApiFixture.h"

namespace vw::test {
namespace {

const HKEY kRoot = HKEY_CURRENT_USER;
constexpr std::wstring_view kArabicText = L"D:\\نسخة احتياطية";

/// Runs on an English and on an Arabic system: what the code page has survives on each.
class RegistryCodePage : public ApiTest {
  protected:
    ScratchKey key{kRoot, L"Software\\VaultwrightTests\\CodePage"};
    bool arabic = GetACP() == 1256;

    void Write(std::wstring_view path, std::wstring_view name, std::wstring_view data) {
        api.RegValue(kRoot, path, name, REG_SZ, data);
    }
};

TEST_F(RegistryCodePage, ArabicData_AreKeptIfTheCodePageHasThem) {
    Write(key.Path(), L"Name", kArabicText);
    const std::wstring expected = arabic ? std::wstring(kArabicText) : L"D:\\???? ????????";
    EXPECT_EQ(ReadValue(kRoot, key.Path(), L"Name"), TextValue(expected));
    EXPECT_EQ(api.RegValue(kRoot, key.Path(), L"Name", REG_SZ), expected);
}

TEST_F(RegistryCodePage, ArabicNames_AreKeptIfTheCodePageHasThem) {
    Write(key.Path(), L"الاسم", L"text");
    const std::wstring expected = arabic ? L"الاسم" : L"?????";
    EXPECT_EQ(ReadValue(kRoot, key.Path(), expected), TextValue(L"text"));
    EXPECT_EQ(api.RegValue(kRoot, key.Path(), L"الاسم", REG_SZ), L"text");
    EXPECT_EQ(api.RegDeleteValue(kRoot, key.Path(), L"الاسم"), ERROR_SUCCESS);
    EXPECT_EQ(ReadValue(kRoot, key.Path(), expected), std::nullopt);
}

TEST_F(RegistryCodePage, ArabicKeys_AreKeptIfTheCodePageHasThem) {
    Write(key.Path(L"مفتاح"), L"Name", L"text");
    const std::wstring expected = key.Path(arabic ? L"مفتاح" : L"?????");
    EXPECT_TRUE(KeyExists(kRoot, expected));
    EXPECT_EQ(api.RegDeleteKeyVB(kRoot, key.Path(L"مفتاح")), ERROR_SUCCESS);
    EXPECT_FALSE(KeyExists(kRoot, expected));
}

TEST_F(RegistryCodePage, ForeignArabicData_AreReadIfTheCodePageHasThem) {
    WriteValue(kRoot, key.Path(), L"Name", TextValue(kArabicText));
    EXPECT_EQ(api.RegValue(kRoot, key.Path(), L"Name", REG_SZ),
              arabic ? std::wstring(kArabicText) : L"D:\\???? ????????");
}

TEST_F(RegistryCodePage, KeepsTheLettersOfBothCodePages) {
    const std::wstring text = L"\u00AB0101\u00BB \u00E9\u00E7\u20AC";
    Write(key.Path(), L"Name", text);
    EXPECT_EQ(ReadValue(kRoot, key.Path(), L"Name"), TextValue(text));
    EXPECT_EQ(api.RegValue(kRoot, key.Path(), L"Name", REG_SZ), text);
}

TEST_F(RegistryCodePage, WritesAQuestionMarkForAMissingLetter) {
    Write(key.Path(), L"Name", L"\u0100\uFF21");
    EXPECT_EQ(ReadValue(kRoot, key.Path(), L"Name"), TextValue(L"??"));
}

}  // namespace
}  // namespace vw::test
