#include "console/TaskScheduler.h"

#include <string_view>

#include "platform/Com.h"
#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"

// Behind the header above, which they build on.
#include <initguid.h>
#include <oleauto.h>
#include <taskschd.h>

namespace vw {
namespace {

constexpr std::wstring_view kScheduler = L"the system's task scheduler";
constexpr const wchar_t* kFolder = L"\\Vaultwright";

/// A text for calls to objects.
class Bstr {
  public:
    explicit Bstr(const std::wstring& text) : text_(SysAllocString(text.c_str())) {}
    Bstr(const Bstr&) = delete;
    Bstr& operator=(const Bstr&) = delete;
    ~Bstr() { SysFreeString(text_); }

    [[nodiscard]] BSTR Get() const noexcept { return text_; }

  private:
    BSTR text_;
};

std::wstring TakeText(BSTR text) {
    std::wstring taken = text != nullptr ? std::wstring(text, SysStringLen(text)) : L"";
    SysFreeString(text);
    return taken;
}

VARIANT Nothing() {
    VARIANT nothing;
    VariantInit(&nothing);
    return nothing;
}

// Codes of files and rights keep their meaning; the others are named as they are.
[[noreturn]] void RaiseResult(HRESULT result, std::wstring_view path) {
    const auto code = static_cast<std::uint32_t>(result);
    if (HRESULT_FACILITY(result) == FACILITY_WIN32) {
        Throw(ErrorNumberOf(HRESULT_CODE(result)), path);
    }
    wchar_t text[64]{};
    swprintf(text, 64, L"The task scheduler answers 0x%08X", static_cast<unsigned>(code));
    ThrowWith(error_number::kAccessError, text, path);
}

bool IsMissing(HRESULT result) {
    return result == HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND) ||
           result == HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND);
}

}  // namespace

struct TaskScheduler::Objects {
    ComApartment apartment{COINIT_MULTITHREADED};
    ComPtr<ITaskService> service;  // released before the apartment ends

    // The folder of our tasks; null when there is none and none is to be made.
    [[nodiscard]] ComPtr<ITaskFolder> Folder(bool make) const {
        ITaskFolder* folder = nullptr;
        HRESULT result = service->GetFolder(Bstr(kFolder).Get(), &folder);
        if (IsMissing(result) && !make) return nullptr;
        if (IsMissing(result)) {
            ITaskFolder* root = nullptr;
            result = service->GetFolder(Bstr(L"\\").Get(), &root);
            if (FAILED(result)) RaiseResult(result, kScheduler);
            const ComPtr<ITaskFolder> owner(root);
            result = owner->CreateFolder(Bstr(kFolder).Get(), Nothing(), &folder);
        }
        if (FAILED(result)) RaiseResult(result, kScheduler);
        return ComPtr<ITaskFolder>(folder);
    }
};

TaskScheduler::TaskScheduler() : objects_(std::make_unique<Objects>()) {
    ITaskService* service = nullptr;
    HRESULT result = CoCreateInstance(CLSID_TaskScheduler, nullptr, CLSCTX_INPROC_SERVER,
                                      IID_ITaskService, reinterpret_cast<void**>(&service));
    if (SUCCEEDED(result)) {
        objects_->service.reset(service);
        result = service->Connect(Nothing(), Nothing(), Nothing(), Nothing());
    }
    if (FAILED(result)) Throw(error_number::kNoSuchDevice, kScheduler);
}

TaskScheduler::~TaskScheduler() = default;

std::wstring TaskScheduler::Register(const std::wstring& name, const std::wstring& xml) {
    const ComPtr<ITaskFolder> folder = objects_->Folder(true);
    IRegisteredTask* made = nullptr;
    HRESULT result =
        folder->RegisterTask(Bstr(name).Get(), Bstr(xml).Get(), TASK_CREATE_OR_UPDATE, Nothing(),
                             Nothing(), TASK_LOGON_INTERACTIVE_TOKEN, Nothing(), &made);
    if (FAILED(result)) RaiseResult(result, name);
    const ComPtr<IRegisteredTask> task(made);
    BSTR kept = nullptr;
    result = task->get_Xml(&kept);
    if (FAILED(result)) RaiseResult(result, name);
    return TakeText(kept);
}

std::optional<std::wstring> TaskScheduler::Definition(const std::wstring& name) {
    const ComPtr<ITaskFolder> folder = objects_->Folder(false);
    if (!folder) return std::nullopt;
    IRegisteredTask* found = nullptr;
    HRESULT result = folder->GetTask(Bstr(name).Get(), &found);
    if (IsMissing(result)) return std::nullopt;
    if (FAILED(result)) RaiseResult(result, name);
    const ComPtr<IRegisteredTask> task(found);
    BSTR kept = nullptr;
    result = task->get_Xml(&kept);
    if (FAILED(result)) RaiseResult(result, name);
    return TakeText(kept);
}

void TaskScheduler::Remove(const std::wstring& name) {
    const ComPtr<ITaskFolder> folder = objects_->Folder(false);
    const HRESULT result =
        folder ? folder->DeleteTask(Bstr(name).Get(), 0) : HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND);
    if (IsMissing(result)) {
        ThrowWith(error_number::kFileNotFound, L"There is no such task", name);
    }
    if (FAILED(result)) RaiseResult(result, name);
}

}  // namespace vw
