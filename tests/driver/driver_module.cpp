#include "tests/driver/driver_module.h"

#include <cstdlib>
#include <utility>

#include "platform/os/modules.h"
#include "tests/support/temporary_directory.h"

namespace {

std::string FileOf(int generation, bool wide) {
    return std::string(KQ_DRIVER_MODULES "/generation") + std::to_string(generation) + (wide ? "w" : "") + ".dll";
}

/// Writes a copy of a module to the current directory in which these names end in another letter.
std::string CopyWithout(const std::string &path, bool wide, const std::vector<std::string> &missing) {
    static int copies = 0;
    std::string bytes = ReadBytes(path);
    for (const std::string &name : missing) {
        const std::string full_name = name + (wide ? "W" : "");
        const std::size_t at = bytes.find('\0' + full_name + '\0');
        EXPECT_NE(at, std::string::npos) << full_name;
        bytes[at + full_name.size()] = '_';
    }
    std::string copy = std::filesystem::current_path() / ("copy" + std::to_string(++copies) + ".dll");
    WriteBytes(copy, bytes);
    return copy;
}

}  // namespace

CTestModule::CTestModule(const std::string &path, int generation, bool wide)
    : handle_(kq_os::LoadLibraryA(path)), generation_(generation), wide_(wide) {
    if (handle_ == nullptr) {
        ADD_FAILURE() << path << " doesn't load";
        std::abort();
    }
    control_ = reinterpret_cast<TModuleControl *(*)()>(kq_os::GetProcAddress(handle_, "TestControl"))();
    *control_ = TModuleControl();
}

CTestModule::CTestModule(int generation, bool wide) : CTestModule(FileOf(generation, wide), generation, wide) {}

CTestModule::CTestModule(int generation, bool wide, const std::vector<std::string> &missing)
    : CTestModule(CopyWithout(FileOf(generation, wide), wide, missing), generation, wide) {}

CTestModule CTestModule::Both() { return {KQ_DRIVER_MODULES "/both.dll", 1, false}; }

CTestModule::~CTestModule() { kq_os::FreeLibrary(handle_); }

std::string CTestModule::TakeLog() const { return std::exchange(control_->log, {}); }

void CTestModule::SetTexts(std::u16string_view text, std::u16string_view second) const {
    control_->text = BytesOf(text);
    control_->wide_text = text;
    control_->second_text = BytesOf(second);
    control_->wide_second_text = second;
}

std::string CTestModule::Given() const {
    return wide_ ? Utf8Of(control_->wide_given) : kq_base::ToUtf8(control_->given);
}

std::string CTestModule::Present() const {
    return wide_ ? Utf8Of(control_->wide_present) : kq_base::ToUtf8(control_->present);
}

std::string Utf8Of(std::u16string_view text) {
    std::string utf8;
    for (const char16_t character : text) {
        if (character < 0x80) {
            utf8 += static_cast<char>(character);
        } else if (character < 0x800) {
            utf8 += static_cast<char>(0xC0 | character >> 6);
            utf8 += static_cast<char>(0x80 | (character & 0x3F));
        } else {
            utf8 += static_cast<char>(0xE0 | character >> 12);
            utf8 += static_cast<char>(0x80 | (character >> 6 & 0x3F));
            utf8 += static_cast<char>(0x80 | (character & 0x3F));
        }
    }
    return utf8;
}

std::string BytesOf(std::u16string_view text) {
    std::string bytes;
    EXPECT_TRUE(kq_base::FromUtf8(Utf8Of(text), bytes));
    return bytes;
}

CInitializedDriver::CInitializedDriver(const CTestModule &module) {
    CTextBuffer256 error;
    CDriver::Init(module.Handle());
    EXPECT_TRUE(CDriver::Initialize(error.kHigh, error.Data(), 0, 0, "drv")) << error.Utf8();
    module.Control().log.clear();
}
