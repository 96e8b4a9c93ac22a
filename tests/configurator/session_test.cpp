#include <gtest/gtest.h>

#include "tests/support/model_session.h"

namespace {

using TOutcome = kq_pdt::CConfiguratorSession::TOutcome;

const char *const kPdt =
    "def_section name = 'S'; required; def_key name = 'k'; channels; par = number { ch_from; ch_type = real;"
    " ch_direction = input }; par = number { ch_to }; end_key end_section";

/// Notes the calls of the session's window in their order.
class CNotingSession final : public CModelSession {
public:
    void ClearSheet() override { Note("clear"); }
    void ChannelsChanged() override { Note("channels"); }
    void PostCommand(kq_pdt::TWindowCommand command, std::uint32_t /*parameter*/) override {
        Note(command == kq_pdt::cmRebuildSheets ? "sheets" : "post");
    }
    void AddWarning(std::string_view text1, std::string_view text2, std::uint32_t line) override {
        Note("warning");
        CModelSession::AddWarning(text1, text2, line);
    }
    void AddError(std::string_view text1, std::string_view text2, std::uint32_t line) override {
        Note("error");
        CModelSession::AddError(text1, text2, line);
    }

    std::string notes;

private:
    void Note(const std::string &note) { notes += notes.ends_with(note + " ") ? "" : note + " "; }
};

TEST(Session, TranslationGoesThroughItsStepsInOrder) {
    CNotingSession session;
    // The overlap in the driver map is reported before the template's channels and the parameter file's.
    EXPECT_FALSE(session.Translate(std::string("channels = 1, 2, boolean, input; ") + kPdt, "[X]\n[S]\nk = 8, 9\n",
                                   "begin 1 - 5 boolean input 5 - 6 real input end."));
    EXPECT_EQ(
        session.MessageLines(),
        "E Kanály definované v DMF se překrývají: 5 - 5Definice kanálů v PAR souboru nesouhlasí s definicí v DMF:\n"
        "W:1 Nerozpoznaná sekce: X\n");
    EXPECT_EQ(session.notes, "clear error channels warning ");
    EXPECT_EQ(session.Channels(), "*1-2 boolean input; 3-4 boolean input; 5-6 real input; *8-9 real input");
    session.notes.clear();
    EXPECT_TRUE(session.Translate(kPdt, "[S]\nk = 1, 2\n"));
    EXPECT_EQ(session.notes, "clear channels sheets channels ") << "the old model gives its channels back";
    EXPECT_EQ(session.Channels(), "*1-2 real input");
    session.notes.clear();
    CModelSession::Edit(session.SheetData(), session.Key(0, 0), 1,
                        [](kq_pdt::TCellEditor &editor) { return editor.CountBox().UserType("2"); });
    EXPECT_EQ(session.notes, "channels sheets ");
}

TEST(Session, BrokenTemplateLeavesAnEmptyModelAndBothTexts) {
    CModelSession session;
    ASSERT_TRUE(session.Translate(kPdt, "[S]\nk = 1, 2\n"));
    session.SetTemplateText("def_section name = 5");
    EXPECT_EQ(session.TranslateToModel(), TOutcome::kTemplateFailed);
    EXPECT_TRUE(session.SheetData().Instances().List().empty());
    EXPECT_EQ(session.ParView().Text(), "[S]\nk = 1, 2\n");
    EXPECT_EQ(session.RepairDmf(), TOutcome::kTemplateFailed);
    session.SetTemplatePath("/nowhere/x.pdt");
    EXPECT_EQ(session.TranslateToModel(), TOutcome::kTemplateFailed);
    EXPECT_EQ(kq_base::ToUtf8(session.TemplateResult().message.View()), "Nelze otevřít PDT soubor.");
    EXPECT_EQ(session.TemplateResult().line, 0U);
}

TEST(Session, RepairWritesWhatTheConfigurationDefines) {
    struct {
        const char *par;
        const char *before;
        TOutcome outcome;
        const char *after;
    } const kCases[] = {
        {"[S]\nk = 1, 5\n", "begin 1 - 20 boolean input end.", TOutcome::kDone, "begin\r\n  1 - 5 real input\r\nend."},
        {"[S]\nk = 1, x\n", "begin 1 - 20 boolean input end.", TOutcome::kErrors, "begin 1 - 20 boolean input end."},
        {"[S]\nk = 5, 1\n", "", TOutcome::kErrors, ""},
        {"[S]\nk = 5, 1\n[T]\n", "x", TOutcome::kErrors, "x"},
        {"[S]\nk = 7, 7\n[T]\n", "x", TOutcome::kDone, "begin\r\n  7 real input\r\nend."},
    };
    CModelSession session;
    session.AddError("an old one", "", 1);
    for (const auto &[par, before, outcome, after] : kCases) {
        session.SetTemplateText(kPdt);
        session.ParView().SetText(par);
        session.DmfView().SetText(before);
        EXPECT_EQ(session.RepairDmf(), outcome) << par;
        std::string map(session.DmfView().Text());
        EXPECT_EQ(map.substr(0, map.find_last_not_of("\r\n") + 1), after) << par;
        EXPECT_EQ(session.ParView().Text(), par);
        EXPECT_EQ(session.MessageLines().find("old"), std::string::npos);
    }
}

TEST(Session, MessagesStayUntilClearedAndErrorsCountAnew) {
    CModelSession session;
    session.Translate(kPdt, "[S]\nk = 5, 1\n");
    EXPECT_EQ(session.Messages().ErrorCount(), 1U);
    session.TranslateToModel();
    EXPECT_EQ(session.Messages().ErrorCount(), 1U);
    EXPECT_EQ(session.Messages().Rows().size(), 2U);
    session.ClearMessages();
    EXPECT_EQ(session.Messages().ErrorCount(), 1U);
    EXPECT_TRUE(session.Messages().Rows().empty());
    EXPECT_TRUE(session.Messages().Records().empty());

    session.AddErrorAt(std::string(200, 'a'), std::string(200, 'b'), 7, 3);
    session.AddWarning("w", "", 0xFFFFFFFF);
    session.AddMessageRecord(0, 9);
    EXPECT_EQ(session.MessageLines(), "E:7,3 " + std::string(200, 'a') + std::string(55, 'b') + "\nW w\n");
    ASSERT_EQ(session.Messages().Records().size(), 3U);
    EXPECT_FALSE(session.Messages().Records()[2].HasPosition());
    EXPECT_EQ(session.Messages().ErrorCount(), 2U);
}

TEST(Session, TablesOfTheSheetAreFoundByTheirIds) {
    CModelSession session;
    ASSERT_TRUE(session.Translate(kPdt, "[S]\nk = 1, 2\n[X]\na = 1\n"));
    kq_pdt::CParSheetData &data = session.SheetData();
    EXPECT_EQ(data.AllocTableId(), 2U);
    session.Section(0).SetRowId(data.AllocTableId());
    session.Key(1, 0).SetRowId(data.AllocTableId());
    const auto find = [&](std::uint32_t id) {
        kq_pdt::CSectionDef *section = nullptr;
        kq_pdt::CKeyDef *key = nullptr;
        data.FindByTable(id, section, key);
        return std::pair(section, key);
    };
    EXPECT_EQ(find(3), std::pair(&session.Section(0), static_cast<kq_pdt::CKeyDef *>(nullptr)));
    EXPECT_EQ(find(4), std::pair(&session.Section(1), &session.Key(1, 0)));
    EXPECT_EQ(find(2).first, nullptr);
    data.ClearInstances();
    EXPECT_EQ(find(3).first, nullptr);
    EXPECT_EQ(data.AllocTableId(), 5U);
}

}  // namespace
