#include "recorder.h"

#include <fstream>

#include "platform/base/file_system_name.h"
#include "platform/base/paths.h"
#include "signal_values.h"

namespace simulator {

CRecorder::CRecorder(const TParameters &parameters, const char *par_path) {
    const std::string &name = parameters.record_file;
    if (!name.empty()) {
        const bool absolute = name.front() == '/' || name.front() == '\\';
        path_ = absolute ? name : kq_base::JoinPath(kq_base::DirectoryPart(par_path), name);
    }
}

bool CRecorder::Advance(const TParameters &parameters, std::uint64_t step) {
    const std::uint64_t due = step - step % parameters.record_every;
    if (due < last_) {
        last_ = 0;  // the steps were put back to 0
    }
    if (path_.empty() || due == last_) {
        return true;
    }
    last_ = due;
    std::string line = std::to_string(due);
    for (const TSignal &signal : parameters.signals) {
        for (std::uint32_t channel = 0; channel < signal.count; ++channel) {
            line += ";" + ValueText(signal, SignalValue(parameters, signal, channel, due));
        }
    }
    std::ofstream file(kq_base::LocateFile(path_), std::ios::app | std::ios::binary);
    file << line << '\n';
    file.flush();
    return file.good();
}

}  // namespace simulator
