#include "model/variable.h"

#include <gtest/gtest.h>

#include <string>

#include "configurator/kq_cfg.h"
#include "model/sheet_data.h"
#include "tests/model/recorder.h"

namespace {

using kq_pdt::CParSheetData;
using kq_pdt::CVarRefItem;
using kq_pdt::CVarScope;

std::string ValueOf(const CVarScope &scope, const std::string &name) {
    TParValue value;
    scope.Value(name, value);
    return CRecorder::Shown(value);
}

/// The names of all instances but the recorder's.
std::string Names(const CParSheetData &data) {
    std::string names;
    for (const auto &section : data.Instances().List()) {
        kq_base::CTextBuffer text;
        if (section->Names()->Items().AppendText(text)) {
            names += (names.empty() ? "" : " ") + std::string(text.View());
        }
    }
    return names;
}

void Load(CParSheetData &data, const std::string &text) {
    kq_pdt::TCompileResult result;
    ASSERT_TRUE(data.LoadTemplateText(text, result)) << result.message.View();
}

const std::string kPorts =
    "def_section name = number { id = %n% }; end_section "
    "def_section name = 'Port' + %n%; depend_on = %n%; end_section "
    "def_section name = 'Second' + %n%; depend_on = %n%; end_section ";

TEST(Scopes, TheInnermostCounts) {
    CParSheetData data;
    CVarScope &root = data.RootScope();
    CVarScope section;
    CVarScope key;
    root.Declare("a").Replace(TParValue::Number(1));
    section.Declare("a").Replace(TParValue::Number(2));
    section.Declare("b").Replace(TParValue::Number(3));
    key.Declare("a").Replace(TParValue::Number(4));
    const std::unique_ptr<CVarRefItem> reference = root.Reference("a");
    const auto seen = [&] {
        TParValue value;
        reference->GetValue(value);
        EXPECT_EQ(CRecorder::Shown(value), ValueOf(root, "a"));
        return ValueOf(root, "a") + ValueOf(root, "b");
    };
    EXPECT_EQ(seen(), "1?");
    EXPECT_EQ(root.Reference("b"), nullptr);
    root.Push(&section);
    EXPECT_EQ(seen(), "23");
    EXPECT_NE(root.Reference("b"), nullptr);
    root.Push(&key);
    root.Push(&section);
    EXPECT_EQ(section.UseCount(), 2U);
    EXPECT_EQ(seen(), "23");
    root.Pop();
    EXPECT_EQ(seen(), "43");

    EXPECT_EQ(root.Resolve("b", false)->Variable(), section.Find("b"));
    EXPECT_EQ(root.Resolve("c", false)->Name(), "c");
    EXPECT_TRUE(root.Variables().contains("c"));
    root.Resolve("c", true);
    EXPECT_TRUE(key.Variables().contains("c"));
    root.Pop();
    root.Pop();
    EXPECT_EQ(section.UseCount() + key.UseCount(), 0U);
    root.Resolve("d", true);
    EXPECT_TRUE(root.Variables().contains("d"));

    bool ok = false;
    EXPECT_EQ(root.Assign("nobody", TParValue::Number(1), ok), nullptr);
    EXPECT_TRUE(ok);
    EXPECT_EQ(root.Find("nobody"), nullptr);
    const std::unique_ptr<CVarScope> clone = section.Clone();
    clone->Find("a")->Replace(TParValue::Number(9));
    EXPECT_EQ(ValueOf(*clone, "a") + ValueOf(*clone, "b") + ValueOf(section, "a"), "932");
}

TEST(Variables, InitialValues) {
    CParSheetData data;
    const auto value_after = [&data](std::uint32_t keyword, std::uint32_t form, const std::string &text) {
        kq_pdt::CVariable variable(data.RootScope(), "v");
        variable.SetInitial(kq_pdt::kwInitValue, kq_pdt::formText, "old");
        variable.SetInitial(keyword, form, text);
        TParValue value;
        variable.Read(value);
        return CRecorder::Shown(value);
    };
    EXPECT_EQ(value_after(kq_pdt::kwInitValue, kq_pdt::formText, "5"), "'5'");
    EXPECT_EQ(value_after(kq_pdt::kwInitValue, kq_pdt::formNumber, "5"), "5");
    EXPECT_EQ(value_after(kq_pdt::kwInitValue, kq_pdt::formNumber, "5.0"), "'old'");
    EXPECT_EQ(value_after(kq_pdt::kwDefault, kq_pdt::formNumber, "5"), "'old'");
}

TEST(Variables, TakeANewChannelOnceWhenFirstRead) {
    CParSheetData data;
    CVarScope &root = data.RootScope();
    root.Declare("c").SetInitial(kq_pdt::kwInitValue, kq_pdt::kwCreateNewChannel, "create_new_channel");
    root.Declare("d").SetInitial(kq_pdt::kwInitValue, kq_pdt::kwCreateNewChannel, "3");
    const std::unique_ptr<CVarScope> clone = root.Clone();
    EXPECT_EQ(data.Ranges().RowCount(), 0U);
    const std::uint32_t first = data.NewChannelRange(false, 1);
    const auto number = [first](std::uint32_t offset) { return std::to_string(first + offset); };
    EXPECT_EQ(ValueOf(root, "c"), number(1));
    EXPECT_EQ(ValueOf(root, "c"), number(1));
    EXPECT_EQ(ValueOf(root, "d"), number(2));
    EXPECT_EQ(ValueOf(*clone, "c"), number(5));
}

TEST(Variables, AnEqualValueRunsNothing) {
    CParSheetData data;
    CRecorder &recorder = CRecorder::AddTo(data, {"v"});
    CVarScope &root = data.RootScope();
    root.Declare("v");
    EXPECT_EQ(ValueOf(root, "v"), "?");
    bool ok = true;
    for (const TParValue &value :
         {TParValue::Number(5), TParValue::Number(5), TParValue::Text("5"), TParValue::Text("5"),
          TParValue::Undefined(), TParValue::Undefined(), TParValue::Bool(true)}) {
        root.Assign("v", value, ok);
        EXPECT_TRUE(ok);
    }
    EXPECT_EQ(recorder.log, "v=5 v='5' v=? v=? v=-");
}

TEST(Variables, ARefusedValueGoesBack) {
    CParSheetData data;
    Load(data, kPorts);
    CRecorder &recorder = CRecorder::AddTo(data, {"n"});
    recorder.action = [](const std::string &, const TParValue &value, bool &ok) { ok = ok && value.number != 7; };
    CRecorder &second = CRecorder::AddTo(data, {"n"});
    bool ok = true;
    EXPECT_EQ(data.RootScope().Assign("n", TParValue::Number(7), ok), nullptr);
    EXPECT_FALSE(ok);
    EXPECT_EQ(Names(data) + ValueOf(data.RootScope(), "n"), "?");
    EXPECT_NE(data.RootScope().Assign("n", TParValue::Number(5), ok), nullptr);
    EXPECT_TRUE(ok);
    EXPECT_EQ(data.RootScope().Assign("n", TParValue::Number(7), ok), nullptr);
    EXPECT_FALSE(ok);
    EXPECT_EQ(Names(data) + " " + ValueOf(data.RootScope(), "n"), "Port5 5");
    EXPECT_EQ(recorder.log, "n=7 n=- n=5 n=7 n=5");
    EXPECT_EQ(second.log, recorder.log);
}

TEST(Variables, AReferenceKeepsToItsSection) {
    CParSheetData data;
    Load(data, kPorts);
    const CRecorder &recorder = CRecorder::AddTo(data, {"n"});
    const std::unique_ptr<CVarRefItem> one = data.RootScope().Reference("n");
    const std::unique_ptr<CVarRefItem> other = data.RootScope().Reference("n");
    const auto assign = [&](CVarRefItem &reference, std::uint32_t number) {
        bool ok = false;
        reference.Assign(TParValue::Number(number), ok);
        EXPECT_TRUE(ok);
        return Names(data) + " " + ValueOf(data.RootScope(), "n");
    };
    EXPECT_EQ(assign(*one, 2), "Port2 2");
    EXPECT_EQ(assign(*one, 3), "Port3 3");
    EXPECT_EQ(assign(*other, 3), "Port3 3");
    EXPECT_EQ(assign(*other, 4), "Port3 Port4 4");
    EXPECT_EQ(assign(*one, 5), "Port5 Port4 5");
    const std::unique_ptr<CVarRefItem> clone = one->CloneReference();
    EXPECT_EQ(assign(*clone, 6), "Port6 Port4 6");
    EXPECT_EQ(recorder.log, "n=2 n=3 n=4 n=5 n=6");
    data.ClearInstances();
    EXPECT_EQ(assign(*one, 8), "Port8 8");
    data.Assignments().SetReading(true);
    const CRecorder &silent = CRecorder::AddTo(data, {"n"});
    EXPECT_EQ(assign(*other, 7), "Port8 Port7 7");
    EXPECT_EQ(silent.log, "");
}

TEST(Variables, AssignmentsSetEachOtherOffAHundredDeep) {
    CParSheetData data;
    CVarScope &root = data.RootScope();
    std::vector<std::string> names;
    for (int number = 0; number <= 150; ++number) {
        names.push_back("v" + std::to_string(number));
        root.Declare(names.back());
    }
    CRecorder &recorder = CRecorder::AddTo(data, names);
    bool refused = false;
    recorder.action = [&](const std::string &name, const TParValue &value, bool &) {
        bool ok = true;
        root.Assign("v" + std::to_string(std::stoi(name.substr(1)) + 1), value, ok);
        refused = refused || !ok;
    };
    bool ok = false;
    root.Assign("v0", TParValue::Number(1), ok);
    EXPECT_TRUE(ok && refused);
    EXPECT_EQ(ValueOf(root, "v99"), "1");
    EXPECT_EQ(ValueOf(root, "v100"), "?");
}

TEST(Variables, RenamingsSetEachOtherOffAHundredDeep) {
    CParSheetData data;
    Load(data, kPorts);
    const std::unique_ptr<CVarRefItem> reference = data.RootScope().Reference("n");
    bool ok = true;
    reference->Assign(TParValue::Number(0), ok);
    CRecorder &recorder = CRecorder::AddTo(data, {"n"});
    std::size_t told = 0;
    recorder.action = [&](const std::string &, const TParValue &value, bool &) {
        ++told;
        bool taken = true;
        reference->Assign(TParValue::Number(value.number + 1), taken);
    };
    reference->Assign(TParValue::Number(1), ok);
    EXPECT_EQ(told, kq_pdt::CAssignments::kMaxDepth);
    told = 0;
    reference->Assign(TParValue::Number(1), ok);
    EXPECT_EQ(told, kq_pdt::CAssignments::kMaxDepth);
}

TEST(Variables, OneAssignmentCreatesAHundredSections) {
    CParSheetData data;
    std::string text;
    for (int number = 0; number <= 100; ++number) {
        const std::string name = "%v" + std::to_string(number) + "%";
        text.append("def_section name = 's' = ").append(name).append("; depend_on = ").append(name);
        text += "; end_section ";
    }
    Load(data, text);
    CVarScope &root = data.RootScope();
    root.Declare("start");
    CRecorder &recorder = CRecorder::AddTo(data, {"start"});
    std::string refused;
    recorder.action = [&](const std::string &name, const TParValue &value, bool &) {
        for (int number = 0; name == "start" && number <= 100; ++number) {
            bool ok = true;
            root.Assign("v" + std::to_string(number), value, ok);
            refused += ok ? "" : " " + std::to_string(number);
        }
    };
    bool ok = true;
    root.Assign("start", TParValue::Number(1), ok);
    EXPECT_EQ(refused, " 100");
    EXPECT_EQ(data.Instances().List().size(), 101U);
    EXPECT_EQ(ValueOf(root, "v99") + ValueOf(root, "v100"), "1?");
    EXPECT_NE(root.Assign("v100", TParValue::Number(1), ok), nullptr);
    EXPECT_TRUE(ok);
}

TEST(Variables, TextsFindTheSectionsThatShowTheirName) {
    const auto written = [](const std::string &item, const std::string &par) {
        kq_cfg::CConfiguration configuration({});
        configuration.Translate("def_section name = 'Main'; def_key name = 'k'; multiple; par = " + item +
                                    " { id = %n% }; end_key end_section def_section name = 'P' + %n%; depend_on = %n%; "
                                    "def_key name = 'x'; par = string; end_key end_section",
                                par, "");
        EXPECT_TRUE(configuration.Report().messages.empty());
        std::string text = configuration.ParText();
        text.erase(0, text.find("[P"));
        std::erase_if(text, [](char letter) { return letter == '\r' || letter == '\n' || letter == ' '; });
        return text;
    };
    const std::string letters = "[Main]\nk = a\nk = A\n";
    EXPECT_EQ(written("string", letters + "[Pa]\nx = 1\n[PA]\nx = 2"), "[Pa]x=1[PA]x=2");
    EXPECT_EQ(written("string", letters + "[PA]\nx = 2\n[Pa]\nx = 1"), "[Pa]x=1[PA]x=2");
    const std::string numbers = "[Main]\nk = 1\nk = 20\nk = 1\n";
    EXPECT_EQ(written("number", numbers + "[P1]\nx = 1\n[P20]\nx = 2\n[P1]\nx = 3"), "[P1]x=1[P20]x=2[P1]x=3");
    EXPECT_EQ(written("number", "[P1]\nx = 1\n[P1]\nx = 2\n[P20]\nx = 3\n[P1]\nx = 4\n" + numbers),
              "[P1]x=4[P20]x=3[P1]x=2");
}

}  // namespace
