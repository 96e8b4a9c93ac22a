/// Values through the proxy beside the same entry of the same module called through its own pointer: scalars, and
/// strings that have passed before.

#include <benchmark/benchmark.h>

#include <array>
#include <cstdlib>
#include <string>

#include "driver/driver_proxy.h"
#include "driver/kq_driver.h"
#include "driver/value_string.h"
#include "platform/os/modules.h"

namespace {

using kq_def::TValue;

/// A module of ours, a proxy on it, and the entries by themselves.
class CBench {
public:
    explicit CBench(bool wide) : module_(kq_os::LoadLibraryA(wide ? KQ_BENCH_DRIVER_WIDE : KQ_BENCH_DRIVER)) {
        const std::string suffix = wide ? "W" : "";
        driver = reinterpret_cast<KQMakeDriverEntry *>(Find("MakeDriver" + suffix))();
        get_input = reinterpret_cast<KQGetInput3Entry *>(Find("GetInput3" + suffix));
        output_request = reinterpret_cast<KQOutputRequest3Entry *>(Find("OutputRequest3" + suffix));
        char error[256];
        proxy_.Init(module_);
        if (!proxy_.Initialize(sizeof(error) - 1, error, 0, 0, "bench")) {
            std::abort();
        }
        proxy = &proxy_;
        benchmark::DoNotOptimize(proxy);
        benchmark::DoNotOptimize(get_input);
        benchmark::DoNotOptimize(output_request);
    }

    void *driver = nullptr;
    KQGetInput3Entry *get_input = nullptr;
    KQOutputRequest3Entry *output_request = nullptr;
    kq_drv::CDriver *proxy = nullptr;

private:
    void *Find(const std::string &name) { return kq_os::GetProcAddress(module_, name.c_str()); }

    kq_os::HMODULE module_;
    kq_drv::CDriver proxy_;
};

TValue Real() {
    TValue value;
    value.tag = kq_def::kTagReal;
    return value;
}

void InputByPointer(benchmark::State &state) {
    CBench bench(false);
    TValue value = Real();
    std::uint32_t code = 0;
    std::uint32_t status = 0;
    for (auto _ : state) {
        code = 0;
        bench.get_input(bench.driver, 7, &value, &status, nullptr, &code);
        benchmark::DoNotOptimize(code == 0);
    }
}
BENCHMARK(InputByPointer);

void InputByProxy(benchmark::State &state) {
    CBench bench(false);
    TValue value = Real();
    std::uint32_t code = 0;
    std::uint32_t status = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(bench.proxy->GetInput(code, 7, &value, status, nullptr));
    }
}
BENCHMARK(InputByProxy);

void OutputByPointer(benchmark::State &state) {
    CBench bench(false);
    TValue value = Real();
    benchmark::DoNotOptimize(value);
    for (auto _ : state) {
        bench.output_request(bench.driver, 7, value, 0, nullptr);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(OutputByPointer);

void OutputByProxy(benchmark::State &state) {
    CBench bench(false);
    TValue value = Real();
    benchmark::DoNotOptimize(value);
    std::uint32_t code = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(bench.proxy->OutputRequest(code, 7, value, 0, nullptr));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(OutputByProxy);

/// A text of 20 characters into the caller's room.
void StringInputByPointer(benchmark::State &state) {
    CBench bench(false);
    std::array<char, 1024> room{};
    char *const address = room.data();
    std::uint32_t code = 0;
    std::uint32_t status = 0;
    for (auto _ : state) {
        TValue value;
        value.tag = kq_def::kTagCountedText;
        value.PutField(TValue::kCountAt, std::uint32_t{1024});
        value.PutField(TValue::kCharactersAt, address);
        bench.get_input(bench.driver, 7, &value, &status, nullptr, &code);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(StringInputByPointer);

void StringInputByProxy(benchmark::State &state) {
    CBench bench(state.range(0) != 0);
    TDStringA text;
    std::uint32_t code = 0;
    std::uint32_t status = 0;
    for (auto _ : state) {
        TValue value = kq_def::DStringValue(&text);
        benchmark::DoNotOptimize(bench.proxy->GetInput(code, 7, &value, status, nullptr));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(StringInputByProxy)->Arg(0)->Arg(1)->ArgName("wide");

void StringOutputByProxy(benchmark::State &state) {
    CBench bench(state.range(0) != 0);
    TDStringA text(std::string_view("Teplota kotle 81,5 C"));
    const TValue value = kq_def::DStringValue(&text);
    std::uint32_t code = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(bench.proxy->OutputRequest(code, 7, value, 0, nullptr));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(StringOutputByProxy)->Arg(0)->Arg(1)->ArgName("wide");

}  // namespace
