/// The smallest host: loads the simulator, takes ten steps with it and shows its report.
#include <dlfcn.h>

#include <array>
#include <iostream>

#include "driver/kq_drv.h"
#include "driver/value_scalars.h"
#include "platform/base/code_page.h"
#include "platform/os/modules.h"

int main(int count, char **arguments) {
    if (count != 3) {
        std::cerr << "Usage: host MODULE PAR\n";
        return 2;
    }
    dlerror();
    kq_os::HMODULE module = kq_os::LoadLibraryA(arguments[1]);
    if (module == nullptr) {
        const char *const reason = dlerror();  // none for a file that the system wasn't even asked to load
        std::cerr << arguments[1] << ": " << (reason != nullptr ? reason : "there is no such module") << '\n';
        return 1;
    }
    std::array<char, 256> error{};
    std::array<char, 256> detail{};
    std::uint32_t code = 0;
    std::uint32_t status = 0;
    kq_drv::CDriver driver;
    driver.Init(module);
    const bool ready = driver.Initialize(255, error.data(), 0, 0, "Host") &&
                       driver.ReadParameters(0, arguments[2], 255, error.data(), code, status, 255, detail.data());
    if (ready) {
        driver.Run();
        for (int step = 0; step < 10; ++step) {
            driver.OutputRequestStart();
            driver.OutputRequest(code, 3, kq_def::ScalarValue<kq_def::kTagBoolean>(true), 0, nullptr);
            driver.OutputRequestCompleted();
            driver.OutputFinalized(0, code);
        }
        TDStringA report;
        kq_def::TValue value = kq_def::DStringValue(&report);
        driver.InputRequestStart();
        driver.InputRequest(6);
        driver.InputRequestCompleted();
        if (driver.InputFinalized(0, code) && driver.GetInput(code, 6, &value, status, nullptr)) {
            std::cout << kq_base::ToUtf8(report.View());
        }
        driver.Stop();
    }
    std::cerr << kq_base::ToUtf8(error.data());
    driver.Done();
    kq_os::FreeLibrary(module);
    return ready ? 0 : 1;
}
