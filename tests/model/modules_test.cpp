#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <numeric>

#include "tests/support/model_session.h"
#include "tests/support/temporary_directory.h"

namespace {

/// A directory of modules, copies of one small shared object, under a host that lists it.
class CModules : public testing::Test {
protected:
    CModules() : host_(".") { kq_pdt::SetHostCallback(&host_); }

    static void AddModule(const std::string &path) {
        std::filesystem::copy_file(std::string(KQ_MODULE_DIR) + "/kq_module_gnu.dll", path);
    }
    static void AddModule(const std::string &path, const std::string &pdt, const std::string &text) {
        AddModule(path);
        WriteBytes(pdt, Bytes(text));
    }
    /// The names that the editor of the only key's cell offers.
    std::string Listed(const std::string &attributes) {
        const bool ok = session_.Translate("def_section name = 'S'; required; def_key name = 'm'; par = dll { " +
                                               attributes + " }; end_key end_section",
                                           "");
        EXPECT_TRUE(ok) << session_.TemplateResult().message.View() << session_.MessageLines();
        std::string names;
        session_.Edit(session_.SheetData(), session_.Key(0, 0), 1, [&](kq_pdt::TCellEditor &editor) {
            for (std::size_t row = 1; row <= editor.ComboBox().EntryCount(); ++row) {
                names += (row == 1 ? "" : "|") + std::string(editor.ComboBox().Entry(row));
            }
            return false;
        });
        return names;
    }
    void Choose(std::size_t section, std::size_t key, std::uint32_t cell, std::size_t row) {
        session_.Edit(session_.SheetData(), session_.Key(section, key), cell,
                      [&](kq_pdt::TCellEditor &editor) { return editor.ComboBox().UserSelect(row); });
    }

    CTemporaryDirectory directory_;
    CDirectoryHost host_;
    CModelSession session_;
};

constexpr const char *kTemplate =
    "def_section name = 'S'; required; def_key name = 'm'; par = dll { procedure = 'Version' }; end_key end_section";

std::string SectionOf(const std::string &name) {
    return "def_section name = '" + name +
           "'; required; def_key name = 'k'; channels; par = number { ch_number;"
           " ch_count = 2; ch_type = real; ch_direction = input }; end_key end_section";
}

TEST_F(CModules, ListHoldsWhatHasAllProcedures) {
    AddModule("b.dll");
    AddModule("A.DLL");
    AddModule("further.so");
    WriteBytes("text.dll", "no module");
    WriteBytes("b.txt", "");
    host_.further = {"./further.so", "./text.dll", "./gone.dll"};
    for (const char *path : {"b.pdt", "A.pdt"}) {
        WriteBytes(path, "");
    }
    EXPECT_EQ(Listed(""), "A.DLL|b.dll|further.so");
    EXPECT_EQ(Listed("procedure = 'Version'; procedure = 'Initialised'"), "A.DLL|b.dll|further.so");
    EXPECT_EQ(Listed("procedure = 'Version'; procedure = 'Check'"), "");
    EXPECT_EQ(Listed("procedure = 'HiddenFunction'"), "") << "what isn't exported doesn't count";
    EXPECT_EQ(Listed("procedure = 'OnlyInNeeded'"), "") << "nor what a library it needs exports";
    EXPECT_EQ(session_.boxes, std::vector<std::string>{});
    host_.listed = 0;
    session_.Translate(kTemplate, "[S]\nm = A\n[S]\nm = b\n[S]\nm = A\n");
    EXPECT_EQ(host_.listed, 1U);
    kq_pdt::SetHostCallback(nullptr);
    EXPECT_EQ(Listed(""), "");
    EXPECT_EQ(session_.Written(), "[S]\n\n");
}

TEST_F(CModules, FileMayNameTheModuleInAnyCaseAndWithoutItsExtension) {
    AddModule("Alpha.dll", "Alpha.pdt", SectionOf("FromAlpha"));
    AddModule("Beta.dll", "Beta.pdt", SectionOf("FromBeta"));
    struct {
        const char *value;
        const char *written;
        const char *section;
    } const kCases[] = {
        {"Beta.dll", "Beta.dll", "FromBeta"}, {"beta", "Beta.dll", "FromBeta"},
        {"BETA.DLL", "Beta.dll", "FromBeta"}, {"alpha", "Alpha.dll", "FromAlpha"},
        {"gamma", "Alpha.dll", "FromAlpha"},  {"Beta.dl", "Alpha.dll", "FromAlpha"},
    };
    for (const auto &[value, written, section] : kCases) {
        const bool known = session_.Translate(kTemplate, std::string("[S]\nm = ") + value + "\n");
        EXPECT_EQ(known, std::string(value) != "gamma" && std::string(value) != "Beta.dl") << value;
        EXPECT_EQ(session_.Written(), "[S]\n  m  = " + std::string(written) + "\n\n[" + section + "]\n  k  = 1\n\n")
            << value;
    }
    EXPECT_EQ(host_.asked.back(), "Alpha.pdt");
}

TEST_F(CModules, SectionsOfTheModuleAreReadWhereverTheyAre) {
    AddModule("A.dll", "A.pdt",
              SectionOf("Of") +
                  " def_section name = 'Free'; def_key name = 'x'; par = string; end_key end_section"
                  " def_section name = 'Many'; multiple; def_key name = 'x'; par = string; end_key end_section");
    ASSERT_TRUE(session_.Translate(kTemplate,
                                   "[Free]\nx = 1\n[Of]\nk = 7\n[Many]\nx = 3\n[S]\nm = A\n[Of]\nk = 9\n"
                                   "[Free]\nx = 2\n[Many]\nx = 4\n"))
        << session_.MessageLines();
    EXPECT_EQ(session_.MessageLines(), "");
    // The section after its source is read by the first pass; the one before it is read into the same instance.
    EXPECT_EQ(session_.Written(),
              "[S]\n  m  = A.dll\n\n[Of]\n  k  = 7\n\n[Free]\n  x  = 1\n\n[Many]\n  x  = 4\n\n[Many]\n  x  = 3\n\n");
    EXPECT_TRUE(session_.SheetData().Instances().List()[1]->Has(kq_pdt::nfModule));
}

/// Which text comes next to a section that isn't read yet is known also after one that was read has gone.
TEST_F(CModules, TextsGoToTheFirstSectionThatIsLeft) {
    AddModule("A.dll", "A.pdt",
              "def_section name = 'Of'; required; def_key name = 'n'; par = number { id = %n%; default = 1 }; end_key"
              " end_section");
    AddModule("B.dll", "B.pdt", "");
    const std::string pdt =
        "def_section name = 'U'; multiple; def_key name = 'n'; par = number { id = %n% }; end_key"
        " end_section def_section name = 'V'; def_key name = 's'; par = number { id = %s% }; end_key end_section"
        " def_section name = 'S'; depend_on = %s%; def_key name = 'm'; par = dll { procedure = 'Version' }; end_key"
        " end_section def_section name = 'P' + number; depend_on = %n%; end_section";
    ASSERT_TRUE(session_.Translate(pdt,
                                   "[V]\ns = 1\n[S]\nm = A\n[U]\nn = 2\n[U]\nn = 3\n[P4]\n"
                                   "[Nobody]\n[S]\nm = B\n[P5]\n[P6]\n"))
        << session_.MessageLines();
    EXPECT_EQ(session_.Written(),
              "[V]\n  s  = 1\n\n[S]\n  m  = B.dll\n\n[U]\n  n  = 2\n\n[P5]\n\n[U]\n  n  = 3\n\n[P6]\n\n"
              "[Nobody]\n\n");
}

TEST_F(CModules, AnotherChoiceReplacesSectionsAndChannels) {
    AddModule("A.dll", "A.pdt", SectionOf("OfA") + " " + SectionOf("OfA2"));
    AddModule("B.dll", "B.pdt", SectionOf("OfB"));
    AddModule("C.dll", "C.pdt", "def_section nonsense");
    ASSERT_TRUE(session_.Translate(kTemplate, "")) << session_.MessageLines();
    const std::string a = "[S]\n  m  = A.dll\n\n[OfA]\n  k  = 1\n\n[OfA2]\n  k  = 3\n\n";
    EXPECT_EQ(session_.Written(), a);
    EXPECT_EQ(session_.Channels(), "*1-2 real input; *3-4 real input");
    Choose(0, 0, 1, 2);
    EXPECT_EQ(session_.Written(), "[S]\n  m  = B.dll\n\n[OfB]\n  k  = 1\n\n");
    EXPECT_EQ(session_.Channels(), "*1-2 real input");
    EXPECT_EQ(session_.boxes, std::vector<std::string>{});
    Choose(0, 0, 1, 3);
    EXPECT_EQ(session_.Written(), "[S]\n  m  = C.dll\n\n");
    EXPECT_EQ(session_.Channels(), "");
    ASSERT_EQ(session_.boxes.size(), 1U);
    EXPECT_EQ(session_.boxes[0],
              "PDT: Chyba při čtení definice PARu:./C.pdt|Očekáváno jedno z  name def_key required multiple depend_on "
              "channels"
              " end_section řádek:1 pozice:21|");
    Choose(0, 0, 1, 1);
    EXPECT_EQ(session_.Written(), a);
}

TEST_F(CModules, MissingTemplateIsTold) {
    AddModule("A.dll");
    ASSERT_TRUE(session_.Translate(kTemplate, "[S]\nm = A.dll\n"));
    EXPECT_EQ(session_.boxes,
              std::vector<std::string>{
                  "PDT: Chyba při čtení definice PARu:./A.pdt|Nelze otevřít PDT soubor. řádek:0 pozice:0|"});
}

TEST_F(CModules, ConditionLoadsAndReleases) {
    AddModule("A.dll", "A.pdt", SectionOf("OfA"));
    AddModule("B.dll", "B.pdt", SectionOf("OfB"));
    const std::string pdt =
        "def_section name = 'S'; required; var %v%; def_key name = 'k';"
        " par = options { option = 'a'; option = 'b'; id = %v% };"
        " par = dll { enable_if %v% = 'a' }; par = dll { enable_if %v% = 'b' }; end_key end_section";
    ASSERT_TRUE(session_.Translate(pdt, "[S]\nk = a, A\n")) << session_.MessageLines();
    EXPECT_EQ(session_.Channels(), "*1-2 real input");
    EXPECT_EQ(session_.SheetData().Instances().List().size(), 2U);
    Choose(0, 0, 1, 2);
    EXPECT_EQ(session_.SheetData().Instances().List().size(), 2U);
    EXPECT_EQ(session_.Section(1).Definition(), session_.SheetData().Definitions().back().get());
    EXPECT_EQ(session_.Channels(), "*1-2 real input") << "the one section went before the other came";
    Choose(0, 0, 1, 1);
    EXPECT_EQ(session_.SheetData().Instances().List().size(), 2U);
}

/// A value of a module's section that switches its own module off: while it is published, read or edited.
TEST_F(CModules, SectionMayTakeItselfAway) {
    const std::string pdt =
        "def_section name = 'S'; required; def_key name = 'a'; par = dll { enable_if not %off% = 1 };"
        " end_key end_section";
    const std::string root =
        "def_section name = 'R'; def_key name = 'x'; par = number { id = %off% }; end_key end_section ";
    AddModule(
        "A.dll", "A.pdt",
        "def_section name = 'Of'; required; def_key name = 'k'; par = number { id = %off%; default = 1 }; par = dll;"
        " end_key end_section def_section name = 'Later'; required; end_section");
    for (const char *par : {"", "[S]\na = A\n"}) {
        ASSERT_TRUE(session_.Translate(root + pdt, par)) << session_.TemplateResult().message.View();
        EXPECT_EQ(session_.Written().substr(0, 3), "[S]");
    }
    WriteBytes("A.pdt",
               "def_section name = 'Of'; required; def_key name = 'k'; par = number { id = %off%; default = 2 };"
               " end_key end_section def_section name = 'Later'; required; end_section");
    ASSERT_TRUE(session_.Translate(root + pdt, "[S]\na = A\n[Of]\nk = 2\n")) << session_.MessageLines();
    // With 1 the section goes, which switches the module on again, and so it comes back with its default.
    for (const auto &[number, held] : {std::pair{"3", "3"}, {"1", "2"}, {"0", "0"}}) {
        session_.Edit(session_.SheetData(), session_.Key(1, 0), 1,
                      [typed = number](kq_pdt::TCellEditor &editor) { return editor.CountBox().UserType(typed); });
        const std::string written = "[S]\n  a  = A.dll\n\n[Of]\n  k  = " + std::string(held) + "\n\n[Later]\n\n";
        EXPECT_EQ(session_.Written(), written) << number;
        ASSERT_TRUE(session_.Translate(root + pdt, written));
        EXPECT_EQ(session_.Written(), written) << number;
    }
}

/// What a module's section publishes counts for modules further up, too, whatever they were before it was read.
TEST_F(CModules, ModulesSwitchEachOther) {
    AddModule("A.dll", "A.pdt",
              "def_section name = 'OfA'; def_key name = 'k'; par = number { id = %w% }; end_key end_section");
    AddModule("B.dll", "B.pdt", SectionOf("OfB"));
    const std::string pdt =
        "def_section name = 'S'; def_key name = 'w'; par = number { optional; id = %w% }; end_key"
        " def_key name = 'b'; par = dll { enable_if 0 = %w% mod 2 }; end_key def_key name = 'n';"
        " par = dll { enable_if %w% = nedef }; end_key def_key name = 'a'; par = dll; end_key end_section";
    const std::string par = "[S]\nb = B\nn = B\na = A\n[OfB]\nk = 1, 2\n[OfA]\nk = ";
    struct {
        const char *number;
        const char *messages;
        const char *channels;
    } const kCases[] = {{"4", "", "*1-2 real input"}, {"5", "W:5 Nerozpoznaná sekce: OfB\n", ""}};
    for (const auto &[number, messages, channels] : kCases) {
        ASSERT_TRUE(session_.Translate(pdt, par + number + "\n"));
        EXPECT_EQ(session_.MessageLines(), messages);
        EXPECT_EQ(session_.Channels(), channels);
        EXPECT_NE(session_.Written().find("[OfB]"), std::string::npos) << "the text stays";
    }
}

/// A module's section is published before its text is read, with the first module and the defaults.
TEST_F(CModules, WhatTheModulesSectionSaysCountsAlsoSwitchedOff) {
    AddModule("A.dll", "A.pdt", "def_section name = 'OfA'; required; end_section");
    AddModule("B.dll", "B.pdt", "def_section name = 'OfB'; required; end_section");
    AddModule("Z.dll", "Z.pdt",
              "def_section name = 'In-' + string { default = 'q'; id = %d% }; required; def_key name = 'n';"
              " par = dll { procedure = 'Version'; enable_if %on% = 'y' }; par = number; end_key end_section"
              " def_section name = 'D-' + %d%; depend_on = %d%; end_section");
    const std::string pdt =
        "def_section name = 'S'; required; def_key name = 'on'; par = options { option = 'y'; option = 'n'; id = %on% "
        "};"
        " end_key def_key name = 'm'; par = dll { procedure = 'Version' }; end_key end_section";
    struct {
        const char *on;
        const char *name;
        const char *sections;
    } const kCases[] = {{"y", "q", "D-q In-q OfB S "}, {"n", "rst", "D-rst In-rst S "}};
    for (const auto &[on, name, sections] : kCases) {
        std::string par = "[S]\non = " + std::string(on) + "\nm = Z\n[In-" + name + "]\nn = b, 3\n";
        for (int reading = 0; reading < 2; ++reading) {
            ASSERT_TRUE(session_.Translate(pdt, par)) << session_.MessageLines();
            std::vector<std::string> names;
            for (const auto &section : session_.SheetData().Instances().List()) {
                kq_base::CTextBuffer text;
                const kq_pdt::CScopeGuard scope(section.get());
                section->Names()->Items().AppendText(text);
                names.push_back(std::string(text.View()) + " ");
            }
            std::sort(names.begin(), names.end());
            EXPECT_EQ(std::accumulate(names.begin(), names.end(), std::string()), sections) << reading;
            par = session_.Written();
            EXPECT_NE(par.find("n  = B.dll, 3\n"), std::string::npos) << par;
        }
    }
}

TEST_F(CModules, TemplatesThatLoadEachOtherEndWithOneBox) {
    for (const char *items : {"par = dll;", "par = dll; par = dll; par = dll; par = dll;"}) {
        const std::string text =
            "def_section name = 'S'; required; def_key name = 'm'; " + std::string(items) + " end_key end_section";
        std::filesystem::remove("A.dll");
        AddModule("A.dll", "A.pdt", text);
        session_.boxes.clear();
        session_.Translate(text, "[S]\nm = A\n");
        ASSERT_FALSE(session_.boxes.empty());
        EXPECT_EQ(session_.boxes[0],
                  "PDT: Chyba při čtení definice PARu:./A.pdt|Šablony modulů se načítají navzájem. řádek:0 pozice:0|");
        EXPECT_LE(session_.boxes.size(), 4U);
        EXPECT_LE(session_.SheetData().Instances().List().size(), 401U);
        session_.SheetData().ClearInstances();
        EXPECT_EQ(session_.SheetData().Definitions().size(), 1U) << "the modules' sections go with the instances";
    }
}

}  // namespace
