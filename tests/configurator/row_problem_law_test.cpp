// The law of row problems, on templates and edits at random: a model without a row that has a problem is the one that
// its written file reads into, and a row that has one doesn't come back. From the environment: KQ_ROW_COUNT edits,
// beginning with the template of KQ_ROW_SEED.

#include <gtest/gtest.h>

#include <iostream>
#include <map>

#include "configurator/row_problem.h"
#include "scanner/unread_text.h"
#include "tests/model/edit_law.h"
#include "tests/model/edit_law_state.h"

namespace {

using TWords = std::vector<std::string>;

// The shapes for which edits don't keep file and model in step are left out, as in the law of editing.
constexpr const char *kKnobs =
    "channel_keys=0,section_channels=0,group_keys=0,section_groups=0,driver_map=0,fixed_channels=0,"
    "multiple_dependents=0,module_keys=0,number_words=0,bare_rows=30,publishers=15";
constexpr std::uint32_t kEditsOfOneTemplate = 40;

std::uint32_t FromEnvironment(const char *name, std::uint32_t usual) {
    const char *const text = std::getenv(name);
    std::uint32_t number = usual;
    return text != nullptr && kq_base::ParseDecimal(text, number) ? number : usual;
}

/// Rows as the sheet shows them, and for each how often it is there.
using TRows = std::map<std::string, std::uint32_t>;

template <class TNode>
std::string Cells(TNode &node, std::uint32_t count) {
    std::string text;
    for (std::uint32_t cell = 1; cell <= count; ++cell) {
        kq_base::CTextBuffer buffer;
        bool disabled = false;
        std::uint32_t index = cell;
        node.GetCellInfo(index, buffer, kq_pdt::TCellField::kValue, disabled);
        text += disabled ? " [off]" : " [" + std::string(buffer.View()) + "]";
    }
    return text;
}

std::string SectionText(kq_pdt::CSectionDef &section) {
    const kq_pdt::CScopeGuard scope(&section);
    return "[" + NameOf(section) + "]" + Cells(section.Names()->Items(), section.Names()->Items().CountCells());
}

std::string KeyText(kq_pdt::CSectionDef &section, kq_pdt::CKeyDef &key) {
    const kq_pdt::CScopeGuard scope(&section);
    return SectionText(section) + " " + NameOf(key) + Cells(key, key.GetCellCount() - 1);
}

/// Calls use(row, problem) for each row of a model.
template <class TUse>
void ForEachRow(CModelSession &session, const TUse &use) {
    for (const auto &section : session.SheetData().Instances().List()) {
        use(SectionText(*section), kq_pdt::SectionProblem(*section));
        for (const auto &key : section->Keys()) {
            use(KeyText(*section, *key), kq_pdt::KeyProblem(*section, *key));
        }
    }
}

struct TCounts {
    std::uint32_t models = 0;
    std::uint32_t sound_models = 0;
    std::uint32_t rows = 0;
    std::uint32_t problems = 0;
    std::uint32_t single = 0;  ///< models with just one
    std::uint32_t others = 0;  ///< rows without a problem that don't come back, since rows with one are in the way
    std::map<std::string, std::uint32_t> kinds;
};

/// A model against what reads from its texts.
void CheckModel(CModelSession &model, const TTemplate &pdt, const std::string &par, const std::string &dmf,
                TCounts &counts) {
    const std::string before = WholeState(model);
    TRows sound;
    TRows all;
    TRows problems;
    std::map<std::string, std::string> texts;
    ForEachRow(model, [&](const std::string &row, const std::string &problem) {
        ++all[row];
        ++(problem.empty() ? sound : problems)[row];
        texts[row] = kq_base::ToUtf8(problem);
    });
    ASSERT_EQ(before, WholeState(model)) << "looking at rows changes the model";
    CModelSession fresh;
    fresh.Translate(pdt.pdt, par, dmf);
    const bool silent = fresh.Messages().Rows().empty() && fresh.boxes.empty() &&
                        par_scanner::FindUnreadText(fresh.ParView().Text()).empty();
    TRows read;
    ForEachRow(fresh, [&](const std::string &row, const std::string &) { ++read[row]; });
    ++counts.models;
    counts.rows += static_cast<std::uint32_t>(texts.size());
    if (problems.empty()) {
        ++counts.sound_models;
        EXPECT_TRUE(silent) << fresh.MessageLines() << par << pdt.pdt;
        EXPECT_EQ(all, read) << par << pdt.pdt;
    }
    for (const auto &[row, count] : sound) {
        counts.others += read[row] < count ? 1 : 0;
    }
    std::string told;
    std::uint32_t count_of_problems = 0;
    for (const auto &[row, count] : problems) {
        count_of_problems += count;
        told += row + ": " + texts[row] + "\n";
        counts.kinds[texts[row].substr(0, texts[row].find('"'))] += count;
    }
    counts.problems += count_of_problems;
    // One row with a problem may come back in the place of another one, and a name that is too long harms other rows.
    const std::string row = problems.empty() ? "" : problems.begin()->first;
    const bool harms_others = texts[row].find("příliš dlouhý") != std::string::npos;
    counts.single += count_of_problems == 1 ? 1 : 0;
    if (count_of_problems == 1 && !harms_others) {
        EXPECT_TRUE(read[row] < all[row] || !silent) << told << par << pdt.pdt;
    } else if (count_of_problems != 0) {
        EXPECT_TRUE(all != read || !silent) << told << par << pdt.pdt;
    }
}

/// A value that tries the form, or an ordinary one.
std::string NastyText(CDice &dice) {
    static const TWords kTexts = {
        "",        "a b",  "a,b", " a",  "a ",   "it's", "'a,b'", "a;b",       "(* x",
        "(* x *)", "12EF", "a=b", "[a]", "x]y",  "#",    "a\tb",  "A",         "AB",
        "1",       "12",   "0",   "007", "text", "a\nb", "a:",    "text,text", std::string(250, 'l'),
        "ab",      "z"};
    return "\"" + dice.Pick(kTexts);
}

class CRowProblemLaw {
public:
    /// Edits at random, with the law watched after each that was taken; gives how many there were.
    std::uint32_t Run(const TCase &start, std::uint32_t seed) {
        CDice dice(seed);
        CLawRun run(directory_, start);
        std::uint32_t edits = 0;
        for (; run.IsReadable() && edits < kEditsOfOneTemplate && !testing::Test::HasFailure(); ++edits) {
            TEdit step = run.Choose(dice);
            step.value = NastyText(dice);
            run.Step(step, dice.OneIn(2) ? nullptr : &dice);
            if (run.WasTaken()) {
                SCOPED_TRACE("seed " + std::to_string(seed) + ", edit " + std::to_string(edits));
                CheckModel(run.Model(), start.pdt, run.Par(), run.Dmf(), counts);
            }
        }
        return edits;
    }

    void Print(std::uint32_t edits) const {
        std::cout << edits << " edits, " << counts.models << " models, " << counts.sound_models
                  << " without a problem; " << counts.rows << " rows, " << counts.problems << " with a problem ("
                  << counts.single << " models with just one), " << counts.others << " others that don't come back\n";
        for (const auto &[kind, number] : counts.kinds) {
            std::cout << "  " << number << " " << kind << "\n";
        }
    }

    TCounts counts;

private:
    CModuleDirectory directory_;
};

TEST(RowProblemLaw, RowsWithoutAProblemComeBackAndOthersDont) {
    const TKnobs knobs = MakeKnobs(kKnobs);
    const std::uint32_t count = FromEnvironment("KQ_ROW_COUNT", 1200);
    CRowProblemLaw law;
    std::uint32_t edits = 0;
    for (std::uint32_t seed = FromEnvironment("KQ_ROW_SEED", 1); edits < count && !HasFailure(); ++seed) {
        edits += 1 + law.Run({MakeTemplate(seed, knobs), "", "begin\nend.\n", {}}, seed);
    }
    law.Print(edits);
    EXPECT_GT(law.counts.sound_models * 10, law.counts.models);
    EXPECT_GT(law.counts.problems, 0U);
}

TEST(RowProblemLaw, HoldsForTheExamples) {
    CRowProblemLaw law;
    std::uint32_t edits = 0;
    for (const std::string name : {"modbus/modbus", "meters/meters", "simulator/simulator"}) {
        const auto text = [&](const char *ending) {
            return kq_base::ToUtf8(ReadBytes(KQ_SOURCE_DIR "/examples/" + name + ending));
        };
        for (std::uint32_t seed = 1; seed <= 5; ++seed) {
            edits += law.Run({{text(".pdt"), {}}, text(".par"), text(".dmf"), {}}, seed);
        }
    }
    law.Print(edits);
    EXPECT_GT(law.counts.sound_models, 0U);
    EXPECT_GT(law.counts.problems, 0U);
}

}  // namespace
