#include "tests/platform/ApiFixture.h"

namespace vw::test {
namespace {

/// The services with a code page that runs out of memory: every operation meets a fault.
class RegistryFaults : public ApiTest {
  protected:
    FailingCodePage failing;
    CCommonAPI faulty{registry, failing, boxes, faults};

    // No box is shown (the fixture would fail), the debugger's text names the operation.
    void ExpectFaultIn(std::wstring_view procedure) {
        const ToldError fault = faults.TakeOne();
        EXPECT_EQ(fault.number, error_number::kOutOfMemory);
        EXPECT_EQ(fault.procedure, procedure);
        EXPECT_EQ(fault.kind, L"Class Module");
        EXPECT_EQ(fault.container, L"CCommonAPI");
    }
};

TEST_F(RegistryFaults, RegValue_ReadThrows_ReturnsEmptyText) {
    EXPECT_EQ(faulty.RegValue(HKEY_CURRENT_USER, L"A\\B", L"Name", REG_SZ), L"");
    ExpectFaultIn(L"RegValue");
}

TEST_F(RegistryFaults, RegValue_WriteThrows_ChangesNothing) {
    faulty.RegValue(HKEY_CURRENT_USER, L"A\\B", L"Name", REG_SZ, L"text");
    ExpectFaultIn(L"RegValue");
    EXPECT_EQ(registry.changes, 0);
}

TEST_F(RegistryFaults, StatusCallThrows_ReturnsZero) {
    EXPECT_EQ(faulty.RegKeyCreate(L"A\\B"), 0);
    ExpectFaultIn(L"RegKeyCreate");
    EXPECT_EQ(faulty.RegDeleteValue(HKEY_CURRENT_USER, L"A\\B", L"Name"), 0);
    ExpectFaultIn(L"RegDeleteValue");
    EXPECT_EQ(faulty.RegDeleteKeyVB(HKEY_CURRENT_USER, L"A\\B"), 0);
    ExpectFaultIn(L"RegDeleteKeyVB");
}

TEST_F(RegistryFaults, LogonStartEntry_ReadThrows_IsOff) {
    EXPECT_FALSE(faulty.ApplicationSartup(L"Name"));
    ExpectFaultIn(L"RegValue");
}

TEST_F(RegistryFaults, FileType_ReadThrows_IsNotRegistered) {
    EXPECT_FALSE(faulty.RegisterFileType(L".x"));
    ExpectFaultIn(L"RegValue");
}

}  // namespace
}  // namespace vw::test
