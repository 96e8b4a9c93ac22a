// A module that searches as the file "search" in the current directory says, a step a line, and notes its calls in the
// file "log":
//
//     add PARENT KEY FLAGS NAME   adds an item
//     chain COUNT                 adds so many items, each below the one before it
//     lines A|B|C                 shows progress
//     await                       waits until the search is cancelled
//     nothing                     the search finds nothing
//     put KEY TEXT                when confirmed, appends a line to the parameters if the key's item is checked
//     text TEXT                   when confirmed, makes this line all the parameters
//     delete                      when confirmed, deletes the file of the parameters
//
// KQ_NARROW and KQ_WIDE say in which forms it exports the search, KQ_REST whether it exports the other two entries.

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "driver/kq_driver.h"
#include "driver/kq_driver_w.h"
#include "platform/base/code_page.h"
#include "platform/os/events.h"

namespace {

std::string parameters_path;

void Note(const std::string &line) { std::ofstream("log", std::ios::app) << line << "\n"; }

struct TStep {
    std::string verb;
    std::vector<std::uint32_t> numbers;
    std::string text;
};

std::vector<TStep> Steps() {
    std::vector<TStep> steps;
    std::ifstream file("search");
    for (std::string line; std::getline(file, line);) {
        std::istringstream words(line);
        TStep step;
        words >> step.verb;
        const std::size_t numbers = step.verb == "add" ? 3 : step.verb == "put" || step.verb == "chain" ? 1 : 0;
        step.numbers.resize(numbers);
        for (std::uint32_t &number : step.numbers) {
            words >> number;
        }
        words.get();
        std::getline(words, step.text);
        steps.push_back(step);
    }
    return steps;
}

template <typename TCharacter>
std::basic_string<TCharacter> Text(const std::string &bytes) {
    std::basic_string<TCharacter> text;
    for (const char byte : bytes) {
        text += sizeof(TCharacter) == 1
                    ? static_cast<TCharacter>(byte)
                    : static_cast<TCharacter>(kq_base::kCodePageToUnicode[static_cast<unsigned char>(byte)]);
    }
    return text;
}

template <typename TCharacter>
std::string PathOf(const TCharacter *path) {
    std::string bytes;
    for (; *path != 0; ++path) {
        const auto &all = kq_base::kCodePageToUnicode;
        bytes += sizeof(TCharacter) == 1 ? static_cast<char>(*path)
                                         : static_cast<char>(std::find(all.begin(), all.end(), *path) - all.begin());
    }
    return bytes;
}

template <typename TCharacter, typename TAddItem, typename TProgress>
KQTruth Search(TAddItem *add_item, TProgress *progress, void *cancel) {
    KQTruth found = 1;
    for (const TStep &step : Steps()) {
        if (step.verb == "add") {
            const auto name = Text<TCharacter>(step.text);
            const auto other = Text<TCharacter>("not shown");
            // Every other item has its name's length; no text need live on after the call.
            const bool counted = step.numbers[1] % 2 == 0;
            add_item(step.numbers[0], step.numbers[1], counted ? static_cast<std::uint32_t>(name.size()) : 0,
                     name.empty() ? nullptr : name.data(), 0, other.data(), step.numbers[2]);
        } else if (step.verb == "chain") {
            for (std::uint32_t key = 1; key <= step.numbers[0]; ++key) {
                add_item(key - 1, key, 0, nullptr, 0, nullptr, 2);
            }
        } else if (step.verb == "lines") {
            std::istringstream parts(step.text);
            std::basic_string<TCharacter> lines[3];
            for (auto &line : lines) {
                std::string part;
                std::getline(parts, part, '|');
                line = Text<TCharacter>(part);
            }
            progress(0, lines[0].data(), 0, lines[1].data(), 0, lines[2].data());
        } else if (step.verb == "await") {
            const bool cancelled = kq_os::WaitForSingleObject(cancel, 20000) == kq_os::kWaitObject0;
            Note(cancelled ? "cancelled" : "not cancelled");
        } else if (step.verb == "nothing") {
            found = 0;
        }
    }
    return found;
}

}  // namespace

extern "C" {
#ifdef KQ_NARROW
KQ_DRIVER_ENTRY KQLoadModulesTreeEntry LoadModulesTree;
KQTruth LoadModulesTree(KQPath path, KQAddItemEntry *add_item, KQProgressEntry *progress, void *cancel) {
    parameters_path = PathOf(path.text);
    Note("LoadModulesTree " + parameters_path);
    return Search<char>(add_item, progress, cancel);
}
#endif
#ifdef KQ_WIDE
KQ_DRIVER_ENTRY KQLoadModulesTreeEntryW LoadModulesTreeW;
KQTruth LoadModulesTreeW(KQPathW path, KQAddItemEntryW *add_item, KQProgressEntryW *progress, void *cancel) {
    parameters_path = PathOf(path.text);
    Note("LoadModulesTreeW " + parameters_path);
    return Search<char16_t>(add_item, progress, cancel);
}
#endif
#ifdef KQ_REST
KQ_DRIVER_ENTRY KQPutModulesToParEntry PutModulesToPar;
KQ_DRIVER_ENTRY KQDoneTreeDataEntry DoneTreeData;
void PutModulesToPar(KQIsCheckedEntry *is_checked) {
    Note("PutModulesToPar");
    for (const TStep &step : Steps()) {
        if (step.verb == "put" && is_checked(step.numbers[0]) != 0) {
            std::ofstream(parameters_path, std::ios::app | std::ios::binary) << step.text << "\n";
        } else if (step.verb == "text") {
            std::ofstream(parameters_path, std::ios::binary) << step.text << "\n";
        } else if (step.verb == "delete") {
            std::remove(parameters_path.c_str());
        }
    }
}
void DoneTreeData() { Note("DoneTreeData"); }
#endif
}
