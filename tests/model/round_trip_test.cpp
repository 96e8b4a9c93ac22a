// The law of reading and writing, on templates and edits at random and on what people add by hand: what was written
// reads without an error and is written again as the same bytes, with the same channels, and the driver map made of it
// agrees with it.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "configurator/kq_cfg.h"
#include "tests/model/edit_law.h"

namespace {

using TWords = std::vector<std::string>;

/// The parameter file of a model after some edits, with the marks of a hand that wrote on: comments, other line ends,
/// lines that no key takes, and a section that no definition takes. Nothing if the template's own channels are at odds.
std::string HandWrittenPar(CDice &dice, CModuleDirectory &directory, const TTemplate &pdt, std::string &dmf) {
    CLawRun run(directory, {pdt, "", "begin\nend.\n", {}});
    if (!run.IsReadable()) {
        return {};
    }
    for (std::uint32_t count = 4 + dice.Below(12); count > 0 && run.Failure().cause.empty(); --count) {
        TEdit edit = run.Choose(dice);
        run.Step(edit, &dice);
    }
    dmf = run.Dmf();
    const TWords comments = {"", "", "", "(* key = 1\n *)\n", "  (* note *)\n", "\n"};
    const TWords unknown = {"  ?odd", "?odd  key = 1,, 2  3 , (x)", "? = 'q, r' = [a] ", "?odd = 5"};
    std::string text;
    bool in_section = false;
    for (std::size_t begin = 0; begin < run.Par().size();) {
        const std::size_t end = std::min(run.Par().find('\n', begin), run.Par().size() - 1) + 1;
        const std::string line = run.Par().substr(begin, end - begin);
        begin = end;
        if (line.starts_with("[")) {
            text += in_section && dice.OneIn(4) ? dice.Pick(unknown) + "\r\n" : "";
            in_section = true;
        }
        text += dice.Pick(comments) + (dice.OneIn(3) ? line.substr(0, line.find_last_not_of("\r\n") + 1) + "\n" : line);
    }
    return text + (dice.OneIn(4) ? "[?Other]\n" + dice.Pick(unknown) + "\n" : "");
}

/// The messages but those of required sections that were missing, in the order of their texts.
TWords Messages(const kq_cfg::TReport &report) {
    TWords texts;
    for (const kq_cfg::TMessage &message : report.messages) {
        if (!message.text.starts_with(Bytes("Chybí povinná sekce"))) {
            texts.push_back(kq_base::ToUtf8(message.text));
        }
    }
    std::sort(texts.begin(), texts.end());
    return texts;
}

std::string Table(const kq_cfg::CConfiguration &configuration) {
    std::string text;
    for (const kq_cfg::TChannel &channel : configuration.Channels()) {
        text += std::to_string(channel.first) + "-" + std::to_string(channel.last) + " " + channel.type.value_or("?") +
                " " + channel.direction.value_or("?") + (channel.defined ? "" : " reserved") + "\n";
    }
    return text;
}

TEST(RoundTrip, WhatWasWrittenReadsAndIsWrittenAgainTheSame) {
    CModuleDirectory directory;
    kq_cfg::CConfiguration configuration({});
    std::set<std::string> written;
    std::uint32_t repaired = 0;
    constexpr std::uint32_t kTexts = 400;
    for (std::uint32_t seed = 1; seed <= kTexts; ++seed) {
        CDice dice(seed);
        std::string dmf;
        const TTemplate generated = MakeTemplate(seed, MakeKnobs("modules=0,module_keys=0"));
        const std::string &pdt = generated.pdt;
        const std::string par = HandWrittenPar(dice, directory, generated, dmf);
        if (dmf.empty()) {
            continue;
        }
        SCOPED_TRACE("seed " + std::to_string(seed) + "\n" + kq_base::ToUtf8(pdt) + "----\n" + kq_base::ToUtf8(par));
        configuration.Translate(pdt, par, dmf);
        ASSERT_TRUE(configuration.Report().result.ok) << kq_base::ToUtf8(configuration.Report().result.message);
        const TWords messages = Messages(configuration.Report());
        ASSERT_TRUE(configuration.Report().Good()) << testing::PrintToString(messages);
        const std::string first = configuration.ParText();
        const std::string table = Table(configuration);

        configuration.Translate(pdt, first, dmf);
        ASSERT_EQ(Messages(configuration.Report()), messages) << kq_base::ToUtf8(first);
        ASSERT_EQ(kq_base::ToUtf8(configuration.ParText()), kq_base::ToUtf8(first));
        ASSERT_EQ(Table(configuration), table) << kq_base::ToUtf8(first);

        // Without the driver map new blocks may get numbers that others have further down.
        configuration.TranslateForRepair(pdt, first);
        if (configuration.Report().Good()) {
            ++repaired;
            const std::string map = configuration.DmfText();
            configuration.Translate(pdt, first, map);
            ASSERT_TRUE(configuration.Report().Good()) << kq_base::ToUtf8(first) << map;
            ASSERT_EQ(configuration.DmfText(), map);
        }
        written.insert(first);
    }
    EXPECT_GT(written.size(), kTexts * 8 / 10) << "the texts hardly differ";
    EXPECT_GT(repaired, kTexts / 2);
}

}  // namespace
