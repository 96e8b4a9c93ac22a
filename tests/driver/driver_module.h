#pragma once

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "driver/kq_drv.h"
#include "platform/base/code_page.h"
#include "tests/driver/modules/module_control.h"

/// A module for tests, loaded from its file like any driver, its control as new.
class CTestModule {
public:
    /// One of those that are built: by generation, 0 for one that has the entries of all, and text width.
    CTestModule(int generation, bool wide);
    /// The same without some of its entries: a copy of the file, in which their names are others.
    CTestModule(int generation, bool wide, const std::vector<std::string> &missing);
    /// The one that exports generation 1 in 8 bits and generation 3 in 16 bits.
    static CTestModule Both();
    CTestModule(const CTestModule &) = delete;
    CTestModule &operator=(const CTestModule &) = delete;
    ~CTestModule();

    void *Handle() const { return handle_; }
    TModuleControl &Control() const { return *control_; }
    bool IsWide() const { return wide_; }
    int Generation() const { return generation_; }
    /// The log so far, which is empty then.
    std::string TakeLog() const;
    /// What the module answers with, and what it was given, in UTF-8.
    void SetTexts(std::u16string_view text, std::u16string_view second = {}) const;
    std::string Given() const;
    std::string Present() const;

private:
    CTestModule(const std::string &path, int generation, bool wide);

    void *handle_ = nullptr;
    TModuleControl *control_ = nullptr;
    int generation_;
    bool wide_;
};

/// A buffer for a text of a proxy, which says whether it was written.
class CTextBuffer256 {
public:
    static constexpr std::uint32_t kHigh = 255;

    char *Data() { return buffer_.data(); }
    /// In UTF-8; "?" if nothing was written.
    std::string Utf8() const { return kq_base::ToUtf8(buffer_.data()); }

private:
    std::array<char, kHigh + 1> buffer_ = {'?'};
};

/// Letters of the code page, UTF-16 as UTF-8 and as bytes, by a way of their own.
std::string Utf8Of(std::u16string_view text);
std::string BytesOf(std::u16string_view text);

/// Calls with each of the six modules.
template <typename TUse>
void WithEachModule(TUse use) {
    for (const int generation : {1, 2, 3}) {
        for (const bool wide : {false, true}) {
            SCOPED_TRACE("generation " + std::to_string(generation) + (wide ? " wide" : ""));
            const CTestModule module(generation, wide);
            use(module);
        }
    }
}

/// A proxy with a driver in the module, by the name "drv"; as instance 0. It is done with at the end.
class CInitializedDriver : public kq_drv::CDriver {
public:
    explicit CInitializedDriver(const CTestModule &module);
    CInitializedDriver(const CInitializedDriver &) = delete;
    CInitializedDriver &operator=(const CInitializedDriver &) = delete;
    ~CInitializedDriver() override { CDriver::Done(); }
};
