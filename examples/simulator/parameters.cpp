// Which values of `Limits` a file has depends on the shape and on whether there is noise at all, so the section of the
// whole simulator is read ahead of all signals, wherever it stands. Channels whose place the file leaves open go behind
// those of the signals ahead of them, as the template has it.

#include "parameters.h"

#include <algorithm>

#include "channel_numbers.h"
#include "key_values.h"
#include "scanner/file_par_scanner.h"
#include "texts.h"

namespace simulator {

namespace {

constexpr std::uint32_t kMaxNumber = 0xFFFFFFFF;

class CReader {
public:
    CReader(par_scanner::CParScanner &scanner, TParameters &parameters, TMistake &mistake)
        : scanner_(scanner), parameters_(parameters), mistake_(mistake) {}

    bool Read() {
        bool simulator = false;
        for (bool there = scanner_.FirstSection(); there; there = scanner_.NextSection()) {
            simulator = simulator || scanner_.SectionName() == "Simulator";
            if (!ReadGlobal()) {
                return false;
            }
        }
        if (!simulator) {
            mistake_.text = texts::kNoSection;
            return false;
        }
        for (bool there = scanner_.FirstSection(); there; there = scanner_.NextSection()) {
            if (scanner_.SectionName().starts_with("Signal") && !ReadSignal()) {
                return false;
            }
        }
        return PlaceChannels();
    }

private:
    bool Fail(std::uint32_t line, const std::string &text) {
        mistake_.line = line;
        mistake_.text = std::string(texts::kLine).append(std::to_string(line)).append(": ").append(text);
        return false;
    }
    /// A mistake among the values of the current key, if there is one.
    bool Accept(const CKeyValues &values) {
        const std::string text = values.Mistake();
        if (text.empty()) {
            return true;
        }
        const std::string key(scanner_.KeyName());
        mistake_.place = "[" + std::string(scanner_.SectionName()) + "] " + key;
        return Fail(scanner_.GetKeyLine(), key + ": " + text);
    }

    bool ReadGlobal() {
        const std::string section(scanner_.SectionName());
        for (bool there = scanner_.FirstKey(); there; there = scanner_.NextKey()) {
            CKeyValues values(scanner_);
            const std::string name = section + "." + std::string(scanner_.KeyName());
            if (name == "Simulator.Step") {
                values.TakeNumber(parameters_.step, 10, 60000);
                parameters_.report = parameters_.step * 10;
                values.TakeNumber(parameters_.report, 10, 600000);
            } else if (name == "Simulator.Noise") {
                std::size_t on = 0;
                values.TakeWord(on, {"OFF", "ON"});
                parameters_.noise = on == 1;
                values.TakeNumber(parameters_.seed, 0, 65535);
            } else if (name == "Record.File") {
                values.TakeText(parameters_.record_file);
                values.TakeNumber(parameters_.record_every, 1, 1000);
            } else {
                continue;
            }
            if (!Accept(values)) {
                return false;
            }
        }
        return true;
    }

    bool ReadSignal() {
        constexpr std::string_view kName = "Signal";
        TSignal signal;
        signal.line = scanner_.GetSectionLine();
        const std::string name(scanner_.SectionName());
        mistake_.place = "[" + name + "]";
        if (!ReadNumber(std::string_view(name).substr(kName.size()), signal.number) || signal.number < 1 ||
            signal.number > kMaxSignals) {
            return Fail(signal.line, std::string(texts::kBadSignal) + name);
        }
        const auto same = [&signal](const TSignal &other) { return other.number == signal.number; };
        if (std::any_of(parameters_.signals.begin(), parameters_.signals.end(), same)) {
            return Fail(signal.line, std::string(texts::kSignalTwice) + name);
        }
        if (!ReadShape(signal)) {
            return false;
        }
        signal.alarm = signal.shape != TShape::kSquare && signal.upper > 10 ? signal.upper / 10 * 9 : 0;
        signal.noise = HasNoise(signal) ? 5 : 0;
        if (!ReadKey("Limits", [this, &signal](CKeyValues &values) { TakeLimits(signal, values); }) ||
            !ReadKey("Channels", [&signal](CKeyValues &values) { TakeChannels(signal, values); })) {
            return false;
        }
        parameters_.signals.push_back(signal);
        return true;
    }

    bool HasNoise(const TSignal &signal) const { return parameters_.noise && signal.shape != TShape::kRandom; }

    /// Reads each key of the current section that has a name.
    template <typename TTake>
    bool ReadKey(std::string_view name, TTake take) {
        for (bool there = scanner_.FirstKey(); there; there = scanner_.NextKey()) {
            if (scanner_.KeyName() == name) {
                CKeyValues values(scanner_);
                take(values);
                if (!Accept(values)) {
                    return false;
                }
            }
        }
        return true;
    }

    bool ReadShape(TSignal &signal) {
        return ReadKey("Shape", [&signal](CKeyValues &values) {
            std::size_t shape = 0;
            values.TakeWord(shape, {"SINE", "RAMP", "SQUARE", "RANDOM"});
            signal.shape = static_cast<TShape>(shape);
            if (signal.shape != TShape::kRandom) {
                values.TakeNumber(signal.period, 2, 100000);
            }
            if (signal.shape == TShape::kSquare) {
                values.TakeNumber(signal.duty, 1, 99);
            }
        });
    }

    void TakeLimits(TSignal &signal, CKeyValues &values) const {
        if (signal.shape != TShape::kSquare) {
            values.TakeNumber(signal.upper, 1, 1000000);
            signal.alarm = signal.upper > 10 ? signal.upper / 10 * 9 : 0;
            if (signal.upper > 10) {
                values.TakeNumber(signal.alarm, 0, 1000000);
            }
        }
        if (HasNoise(signal)) {
            values.TakeNumber(signal.noise, 0, 100);
        }
    }

    static void TakeChannels(TSignal &signal, CKeyValues &values) {
        std::size_t access = 0;
        values.TakeWord(access, {"READ", "READWRITE"});
        signal.writable = access == 1;
        values.TakeNumber(signal.count, 1, kMaxChannelsOfSignal);
        values.TakeNumber(signal.first, 1, kMaxNumber);
    }

    bool PlaceChannels() {
        CChannelNumbers numbers;
        return std::all_of(parameters_.signals.begin(), parameters_.signals.end(),
                           [this, &numbers](TSignal &signal) { return Place(numbers, signal); });
    }

    bool Place(CChannelNumbers &numbers, TSignal &signal) {
        mistake_.place = "[Signal" + std::to_string(signal.number) + "] Channels";
        if (signal.first == 0) {
            signal.first = numbers.FreeBehindAll(signal.count);
        }
        if (signal.first == 0 || signal.count - 1 > kMaxNumber - signal.first) {
            return Fail(signal.line, std::string(texts::kNoChannels) + std::to_string(signal.first));
        }
        std::uint32_t taken = 0;
        if (!numbers.Take(signal.first, signal.count, taken)) {
            return Fail(signal.line, std::string(texts::kChannelTwice) + std::to_string(taken));
        }
        return true;
    }

    par_scanner::CParScanner &scanner_;
    TParameters &parameters_;
    TMistake &mistake_;
};

}  // namespace

bool ReadParameters(const char *path, TParameters &parameters, TMistake &mistake) {
    par_scanner::CFileParScanner scanner;
    parameters = {};
    mistake = {};
    if (!scanner.Init(path, 0)) {
        mistake.text = std::string(texts::kNoFile) + path;
        return false;
    }
    const bool read = CReader(scanner, parameters, mistake).Read();
    scanner.Done();
    return read;
}

}  // namespace simulator
