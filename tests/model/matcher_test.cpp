#include "model/matcher.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <vector>

#include "configurator/kq_cfg.h"
#include "model/const_item.h"
#include "model/number_item.h"
#include "model/sheet_data.h"
#include "platform/base/code_page.h"
#include "template/compiler.h"
#include "tests/model/recorder.h"
#include "tests/model/reference_matcher.h"
#include "tests/support/every_text.h"

namespace {

using kq_pdt::CItemList;
using kq_pdt::CItemSeq;
using kq_pdt::CMatcher;
using kq_pdt::CNameIndex;

/// Value lists of one model, as a template has them; the variables v and w are in its root scope, and b, to which all
/// references are bound. They are found by their index.
class CPatterns {
public:
    CPatterns() {
        data.RootScope().Declare("b").Replace(TParValue::Text("1"));
        Reset();
    }
    void Reset() {
        for (const char *name : {"v", "w"}) {
            data.RootScope().Declare(name).Replace(TParValue());
        }
        recorder.log.clear();
    }
    void Add(const std::string &text) {
        kq_pdt::CPdtCompiler compiler;
        kq_pdt::CSectionList sections;
        kq_pdt::TCompileResult result;
        compiler.Init(data, text, data.RootScope(), sections);
        lists.emplace_back();
        ASSERT_TRUE(compiler.CompileValueList(lists.back(), result)) << text << result.message.View();
        lists.back()->BindVariable(*data.RootScope().Find("b"));
        const kq_pdt::TLeads leads = CNameIndex::LeadsOf(lists.back()->Items());
        const auto order = static_cast<std::uint32_t>(lists.size() - 1);
        index.Add(leads, {order + 1000, nullptr});
        index.Add(leads, {order, nullptr});
        index.Remove(leads, order + 1000);
    }
    /// What all items hold: a match pulls numbers into their ranges, and the winner's values are taken over.
    std::string Values() const {
        std::string values;
        for (const auto &list : lists) {
            for (const auto &item : list->Items().Items()) {
                kq_base::CTextBuffer text;
                const bool writes = item->AppendText(text);
                values += std::string(text.View()) + (writes ? " " : "? ");
                if (const auto *number = dynamic_cast<const kq_pdt::CNumberItem *>(item.get())) {
                    values += std::to_string(number->Value()) + " ";
                }
            }
        }
        return values;
    }

    kq_pdt::CParSheetData data;
    CRecorder &recorder = CRecorder::AddTo(data);
    std::vector<std::unique_ptr<CItemList>> lists;
    CNameIndex index;
};

std::string Show(bool matched, std::size_t winner, const CItemSeq *results) {
    std::string text = matched ? std::to_string(winner) + ":" : "no match";
    if (results != nullptr) {
        for (const auto &item : results->Items()) {
            kq_base::CTextBuffer shown;
            const bool writes = item->AppendText(shown);
            text +=
                " " + std::to_string(static_cast<int>(item->Code())) + (writes ? "=" : "?") + std::string(shown.View());
        }
    }
    return text;
}

std::string RunMatcher(CMatcher &matcher, const CPatterns &patterns, std::string_view text) {
    matcher.Begin(text);
    std::vector<CNameIndex::TEntry> found;
    patterns.index.Find(text, found);
    for (const CNameIndex::TEntry &entry : found) {
        matcher.AddPattern(patterns.lists.at(entry.order)->Items(), nullptr, nullptr);
    }
    const bool matched = matcher.Run();
    const std::size_t winner = matched ? found[matcher.Winner()].order : 0;
    const std::unique_ptr<CItemSeq> results = matched ? matcher.TakeResults() : nullptr;
    if (matched && matcher.LinesUp()) {
        // A new key takes the pieces straight into its name. Clones pull numbers of the results into their ranges.
        std::string shown = Show(matched, winner, results.get());
        CItemSeq by_results;
        CItemSeq straight;
        results->CloneInto(by_results);
        patterns.lists[winner]->Items().CloneInto(straight);
        matcher.PutInto(straight);
        straight.ForceIntoRange();
        EXPECT_EQ(Show(true, 0, &straight), Show(true, 0, &by_results)) << text;
        matcher.PutInto(patterns.lists[winner]->Items());
        return shown;
    }
    if (matched) {
        patterns.lists[winner]->Items().CopyValues(*results);
    }
    return Show(matched, winner, results.get());
}

std::string RunReference(const CPatterns &patterns, std::string_view text) {
    CReferenceMatcher matcher(text);
    for (const auto &list : patterns.lists) {
        matcher.AddPattern(list->Items());
    }
    const bool matched = matcher.Run();
    if (matched) {
        patterns.lists[matcher.Winner()]->Items().CopyValues(matcher.Results());
    }
    return Show(matched, matcher.Winner(), matched ? &matcher.Results() : nullptr);
}

using TTexts = std::vector<std::string>;

/// All texts of up to longest pieces.
TTexts AllTexts(std::size_t longest, const std::vector<std::string_view> &pieces) {
    TTexts texts;
    ForEveryText(pieces, longest, [&texts](const std::string &text) { texts.push_back(text); });
    return texts;
}

/// All chains of up to longest items.
TTexts AllChains(std::size_t longest, const TTexts &items) {
    const std::string plus = " + ";
    TTexts links;
    std::transform(items.begin(), items.end(), std::back_inserter(links),
                   [&](const auto &item) { return plus + item; });
    TTexts chains = AllTexts(longest, {links.begin(), links.end()});
    chains.erase(chains.begin());  // the one without an item
    for (std::string &chain : chains) {
        chain.erase(0, plus.size());
    }
    return chains;
}

/// Runs both matchers over each set of patterns and each text, and compares all that can be seen.
class CComparison {
public:
    void Compare(const TTexts &set, const TTexts &texts) {
        CPatterns ours;
        CPatterns reference;
        for (const std::string &pattern : set) {
            ours.Add(pattern);
            reference.Add(pattern);
        }
        for (const std::string &text : texts) {
            ours.Reset();
            reference.Reset();
            const std::string due = RunReference(reference, text);
            matches_ += due == "no match" ? 0 : 1;
            ASSERT_EQ(RunMatcher(matcher_, ours, text), due) << testing::PrintToString(set) << " on " << text;
            ASSERT_EQ(ours.recorder.log, reference.recorder.log) << testing::PrintToString(set) << " on " << text;
            ASSERT_EQ(ours.Values(), reference.Values()) << testing::PrintToString(set) << " on " << text;
        }
    }
    void CompareAll(const TTexts &chains, const TTexts &texts) {
        for (const std::string &chain : chains) {
            Compare({chain}, texts);
            if (testing::Test::HasFatalFailure()) {
                return;
            }
        }
    }
    /// Sets of up to four patterns of up to longest items, at random.
    void CompareSets(const TTexts &items, std::size_t longest, const TTexts &texts, int sets) {
        std::mt19937 random(20241);
        for (; sets > 0 && !testing::Test::HasFatalFailure(); --sets) {
            std::vector<std::string> set(1 + random() % 4);
            for (std::string &pattern : set) {
                pattern = items[random() % items.size()];
                for (std::size_t more = random() % longest; more > 0; --more) {
                    pattern += " + " + items[random() % items.size()];
                }
            }
            Compare(set, texts);
        }
    }
    std::size_t Matches() const { return matches_; }

private:
    CMatcher matcher_;
    std::size_t matches_ = 0;
};

const TTexts kItems = {
    "number",
    "string",
    "'1'",
    "''",
    "'A' { no_case_sensitive }",
    "number { range_from = 2; range_to = 5; optional }",
    "number { range_from = 3 }",
    "options { option = 'a'; option = '1a' label = 'L'; option = '1A' }",
    "options { option = 'A'; option = ''; option = 'a'; no_case_sensitive }",
};

/// The patterns here hand each piece to a variable, or show one.
const TTexts kPublishing = {
    "number { id = %v% }",
    "string { id = %v%; optional }",
    "number { range_from = 2; range_to = 5; id = %w%; enable_if %v% = 1 }",
    "options { option = '1'; option = '1a'; id = %w% }",
    "%v%",
    "%b%",
    "'1'",
    "'A' { no_case_sensitive }",
    "string",
};

TEST(Matcher, AgreesWithTheReference) {
    CComparison comparison;
    comparison.CompareAll(AllChains(3, kItems), AllTexts(4, {"1", "a", "."}));
    comparison.CompareAll(AllChains(4, {"number", "string", "'a'"}), AllTexts(5, {"1", "a", "."}));
    comparison.CompareSets(kItems, 3, AllTexts(3, {"1", "a", "A"}), 700);
    comparison.CompareSets(kItems, 6, {"1", "1a1.", "111111", "a1a1a1", "11a.1aA", "1.1.1.1", "aaaaaaa1"}, 3000);
    EXPECT_GT(comparison.Matches(), 10000U);
}

TEST(Matcher, AgreesWithTheReferenceWhilePublishing) {
    CComparison comparison;
    comparison.CompareAll(AllChains(3, kPublishing), AllTexts(4, {"1", "a"}));
    comparison.CompareSets(kPublishing, 3, AllTexts(3, {"1", "2", "a"}), 300);
    const std::string most(200, 'a');
    comparison.Compare({"%b% + %b% + %b% + %b% + 'a'", "'" + most + "' + '" + most + "' + %b% + number"},
                       {"a", "111a", "11111a", most, most + most, most + most + "12", most + most + "a"});
    EXPECT_GT(comparison.Matches(), 3000U);
}

TEST(Matcher, TheLongestOptionWinsAndOfEqualOnesTheLast) {
    const TTexts texts = AllTexts(4, {"a", "A", "b"});
    std::mt19937 random(20251);
    for (int list = 0; list < 400; ++list) {
        const bool case_sensitive = list % 2 == 0;
        std::vector<kq_pdt::COptionEntry> entries(random() % 40);
        for (kq_pdt::COptionEntry &entry : entries) {
            entry.text = texts[random() % texts.size()];
        }
        const kq_pdt::COptionIndex index(entries, case_sensitive);
        for (const std::string &text : texts) {
            std::uint32_t due = kNoNumber;
            for (std::uint32_t at = 0; at < entries.size(); ++at) {
                if (kq_pdt::HasPartAt(text, 0, entries[at].text.View(), case_sensitive) &&
                    (due == kNoNumber || entries[at].text.Length() >= entries[due].text.Length())) {
                    due = at;
                }
            }
            ASSERT_EQ(index.Find(text), due) << text << " in list " << list;
        }
    }
}

TEST(Matcher, NumbersBeyondTheirBounds) {
    const TTexts texts = {"4294967295",   "4294967296", "4294967296x", "99999999999999", "42949672951a", "00000000004",
                          "99999999999x", "0x",         "6x"};
    CComparison comparison;
    for (const std::string attributes :
         {"", "{ range_from = 5 }", "{ range_from = 2; range_to = 5 }", "{ range_to = 5; id = %w% }"}) {
        const std::string number = "number " + attributes;
        comparison.CompareAll(
            {number, number + " + 'x'", number + " + string", number + " + number", number + " + %v%"}, texts);
    }
    EXPECT_GT(comparison.Matches(), 60U);
}

TEST(Matcher, KnownCuts) {
    const std::vector<std::array<std::string, 3>> cases = {{"'ch' + number", "ch12", "0: 3=ch 5=12"},
                                                           {"'ch' + number", "ch", "0: 3=ch"},
                                                           {"'a' + string + 'b'", "axxb", "0: 3=a 6=xx 3=b"},
                                                           {"'a' + string + 'b'", "ab", "0: 3=a 6= 3=b"},
                                                           {"number + 'x'", "12x", "0: 5=12 3=x"},
                                                           {"string + number", "ab12", "0: 6=ab 5=12"},
                                                           {"number + number", "123", "0: 5=1 5=23"},
                                                           {"string + string", "abc", "0: 6=a 6=bc"},
                                                           {"string + '.' + string", "a.b.c", "0: 6=a 3=. 6=b.c"},
                                                           {"number + string", "", "no match"},
                                                           {"''", "", "0: 3="}};
    CMatcher matcher;
    for (const auto &[pattern, text, due] : cases) {
        CPatterns patterns;
        patterns.Add(pattern);
        EXPECT_EQ(RunMatcher(matcher, patterns, text), due) << pattern << " on " << text;
    }
    for (const bool constant_first : {true, false}) {
        CPatterns patterns;
        patterns.Add(constant_first ? "'ab'" : "'a' + string");
        patterns.Add(constant_first ? "'a' + string" : "'ab'");
        EXPECT_EQ(RunMatcher(matcher, patterns, "ab"), constant_first ? "0: 3=ab" : "1: 3=ab");
    }
}

/// Counts how often it is asked for a piece, and never has one.
class CCounter final : public kq_pdt::CItem {
public:
    explicit CCounter(std::size_t &count) : CItem(kq_pdt::TItemCode::kOptions), count_(count) {}
    bool Match(std::string_view /*text*/, std::uint32_t /*position*/, kq_pdt::TMatchStep & /*step*/) override {
        ++count_;
        return false;
    }

private:
    std::size_t &count_;
};

TEST(Matcher, FourStringsCostNoMoreThanItemsTimesCharacters) {
    for (const std::size_t length : {10U, 100U, 255U}) {
        CPatterns patterns;
        patterns.Add("string + string + string + string");
        std::size_t count = 0;
        patterns.lists[0]->Items().Append(std::make_unique<CCounter>(count));
        CMatcher matcher;
        EXPECT_EQ(RunMatcher(matcher, patterns, std::string(length, 'x')), "no match");
        EXPECT_LE(count, length + 5);
        EXPECT_GE(count, length - 4);
    }
}

TEST(Matcher, TooManyPublishedCutsEndWithTheSameWinner) {
    const std::string four =
        "string { id = %v% } + string { id = %v% } + string { id = %v% } + string { id = %v% } + '.'";
    CMatcher matcher;
    CPatterns publishing;
    CPatterns silent;
    publishing.Add(four);
    silent.Add("string + string + string + string + '.'");
    const std::string text = std::string(254, 'x') + ".";
    const std::string due = RunMatcher(matcher, silent, text);
    EXPECT_TRUE(due.starts_with("0: 6=x 6=x 6=x 6=xxx")) << due;
    EXPECT_EQ(RunMatcher(matcher, publishing, text), due);
}

TEST(Matcher, TheInterfaceForPeopleGivesTheSame) {
    const kq_cfg::TMatch match =
        kq_cfg::MatchValueList("'ch' + number { optional } + string { enable_if false }", "ch12a");
    ASSERT_TRUE(match.ok && match.matched);
    ASSERT_EQ(match.items.size(), 3U);
    EXPECT_EQ(match.items[1].text, "1");
    EXPECT_EQ(match.items[2].text, std::nullopt);
    EXPECT_FALSE(kq_cfg::MatchValueList("'ch'", "c").matched);
    EXPECT_TRUE(kq_cfg::MatchValueList("'ch';", "c").ok);
    EXPECT_EQ(kq_base::ToUtf8(kq_cfg::MatchValueList("'ch' 'd'", "ch").message), "Očekáván  ");
    EXPECT_FALSE(kq_cfg::MatchValueList("", "").ok);
}

}  // namespace
