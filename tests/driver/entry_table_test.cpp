// The table of entries beside the one in the documentation for authors of modules.

#include "driver/entry_table.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>

namespace {

using namespace kq_drv;

TEST(EntryTable, DocumentationHasTheSameTable) {
    const std::map<TEntryNeed, std::string> needs = {
        {TEntryNeed::kEitherWidth, " must "},          {TEntryNeed::kNeeded, " must "},
        {TEntryNeed::kOneOfSetUp, " one of set-up "},  {TEntryNeed::kOneOfInput, " one of input "},
        {TEntryNeed::kOneOfOutput, " one of output "}, {TEntryNeed::kOptional, " "},
        {TEntryNeed::kDeviceSearch, " search "},
    };
    std::ifstream page(KQ_SOURCE_DIR "/docs/driver-interface.md");
    std::string line;
    while (std::getline(page, line) && !line.starts_with("| entry | needed |")) {
    }
    std::getline(page, line);
    for (const TEntryRow &row : kEntryTable) {
        std::string wanted = std::string("| `").append(row.name).append("` |").append(needs.at(row.need));
        wanted.append(row.generation != 0 ? "| " + std::to_string(row.generation) : "|").append(" |");
        wanted.append(row.texts ? " yes | " : " | ");
        std::getline(page, line);
        EXPECT_EQ(line.substr(0, wanted.size()), wanted);
    }
    std::getline(page, line);
    EXPECT_EQ(line, "") << "the page has more entries";
}

}  // namespace
