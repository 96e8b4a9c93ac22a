// The law of reading and writing over generated templates and parameter files: what was written reads without an error
// and is written again as the same bytes, with the same channels, and the driver map made of it agrees with it.
//
// What docs/par.md names as exceptions doesn't occur in what is generated: texts without a default, optional values
// before others that could take what follows, conditions on what comes further down, unknown sections where a
// required one is missing, conditions and channels in dependent sections.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

#include "configurator/kq_cfg.h"
#include "tests/support/model_session.h"

namespace {

using TWords = std::vector<std::string>;

/// A kind of `par`: its list, and values that it takes. At '@' a condition may be put in.
struct TParKind {
    std::string pdt;
    TWords values;
    bool may_miss = false;  ///< it may be left out between other values, since nothing else is like its values
};

const std::vector<TParKind> kInner = {
    {"number { range_from = 2; range_to = 90; default = 7@ }", {"2", "007", "90", "95", "4294967299"}},
    {"number { default = %n% + 1; range_from = 3@ } ", {"3", "0", "18"}},
    {"number { range_from = 2; range_to = 90 } + 'ms'", {"2ms", "012ms", "99ms"}},
    {"number + ':' + number", {"0:0", "12:07", "1:"}},
    {"string { default = 'a'@ }", {"x", "'a, b'", "''", "(x)", "a=b", "'[;'", "it''s", "Žluť", "%"}},
    {"string { default = %v%@ }", {"v", "\"1", "\t."}},
    {"string { default = 'c' } + '.' + string { default = 'd' }", {"a.b", "a.b.c", "x."}},
    {"options { option = 'on'; option = 'once' label = 'One'; option = '''A B'''; no_case_sensitive@ }",
     {"on", "ONCE", "oN", "'a B'"}},
    {"options { option = 'A'; option = 'AB' } + '-' + number", {"A-1", "AB-22", "A-"}},
    {"%v% + '/' + number", {"vee/3", "vee/"}},
    {"'#' + number { optional; write_if_all }", {"#1", "#010"}, true},
    {"'~Const' { no_case_sensitive }", {"~CONST", "~const"}, true},
};

const std::vector<TParKind> kLast = {
    {"number { optional@ }", {"5", "0"}},
    {"string { optional@ }", {"x", "','"}},
    {"options { optional; option = '1'; option = '12'@ }", {"1", "12"}},
    {"number { optional } + '%' { optional }", {"5%", "%", "7"}},
    {"string { default = 'r'; read_all@ }", {"a b,c", "a,,b", "x , y  z ", "one"}},
};

/// Keeps a row of a `multiple` key written.
const TParKind kMark = {"'.'", {"."}, true};

struct TPar {
    const TParKind *kind;
    char mode;  ///< the choice under which it is enabled; blank for always
};

struct TKey {
    std::string name;
    bool multiple = false;
    bool numbered = false;
    std::vector<TPar> pars;
    bool bare = false;
};

struct TSection {
    std::string name;
    bool numbered = false;
    bool required = false;
    bool dependent = false;
    std::vector<TKey> keys;
};

/// A template and parameter files for it.
class CGenerator {
public:
    explicit CGenerator(std::uint32_t seed) : random_(seed) { MakeTemplate(); }

    const std::string &Pdt() const { return pdt_; }

    std::string Par() {
        std::vector<std::string> blocks;
        const bool unknown = OneIn(3);
        for (std::uint32_t block = unknown ? 1 + Below(2) : 0; block > 0; --block) {
            blocks.push_back("[?" + Number() + "]" + LineEnd() + UnknownKeys());
        }
        for (const TSection &section : sections_) {
            const std::uint32_t least = section.required && unknown ? 1 : 0;
            for (std::uint32_t count = std::max(least, Below(3)); count > 0 && !section.dependent; --count) {
                blocks.push_back(Header(section.name + (section.numbered ? Number() : "")) + Lines(section));
            }
        }
        for (std::uint32_t count = Below(3); count > 0; --count) {
            blocks.push_back(Header("Chan") + ChannelLines());
        }
        TWords linked;
        for (std::uint32_t count = Below(3); count > 0; --count) {
            std::string text = Header("Source");
            for (std::uint32_t rows = Below(5); rows > 0; --rows) {
                linked.push_back(std::to_string(Below(2) == 0 ? Below(4) : Below(120)));
                text += "link=" + linked.back() + LineEnd();
            }
            blocks.push_back(text);
        }
        for (std::uint32_t count = linked.empty() ? 0 : Below(6); count > 0; --count) {
            blocks.push_back(Header("Dep" + Pick(linked) + (sections_.back().numbered ? "-" + Number() : "")) +
                             Lines(sections_.back()));
        }
        std::shuffle(blocks.begin(), blocks.end(), random_);
        std::string text = OneIn(4) ? "before all" + LineEnd() : "";
        for (const std::string &block : blocks) {
            text += block;
        }
        return text;
    }

private:
    std::uint32_t Below(std::uint32_t limit) { return static_cast<std::uint32_t>(random_() % limit); }
    bool OneIn(std::uint32_t count) { return Below(count) == 0; }
    template <class T>
    const T &Pick(const std::vector<T> &all) {
        return all[Below(static_cast<std::uint32_t>(all.size()))];
    }
    std::string Number() { return std::to_string(Below(30)); }
    std::string LineEnd() { return OneIn(3) ? "\r\n" : OneIn(5) ? "\n\n" : "\n"; }
    std::string Header(const std::string &name) {
        return std::string(Below(2), ' ') + (OneIn(3) ? "[ " + name + " ] x" : "[" + name + "]") + LineEnd();
    }

    std::vector<TPar> MakePars(bool with_modes, bool marked) {
        std::vector<std::size_t> order(kInner.size());
        for (std::size_t index = 0; index < order.size(); ++index) {
            order[index] = index;
        }
        std::shuffle(order.begin(), order.end(), random_);
        order.resize(1 + Below(4));
        std::vector<TPar> pars;
        if (marked) {
            pars.push_back({&kMark, ' '});
        }
        for (const std::size_t index : order) {
            pars.push_back({&kInner[index], ' '});
        }
        if (OneIn(2)) {
            pars.push_back({&Pick(kLast), ' '});
        }
        for (TPar &par : pars) {
            if (with_modes && OneIn(2) && par.kind->pdt.find('@') != std::string::npos) {
                par.mode = OneIn(2) ? 'A' : 'B';
            }
        }
        return pars;
    }

    TSection MakeSection(const std::string &name) {
        TSection section{name, OneIn(2), OneIn(2), false, {}};
        for (std::uint32_t key = 0, count = 1 + Below(4); key < count; ++key) {
            const bool bare = OneIn(8);
            const bool multiple = !bare && OneIn(2);
            section.keys.push_back({"key" + std::string(key, 'x') + "-", multiple, multiple && OneIn(2),
                                    bare ? std::vector<TPar>() : MakePars(true, multiple), bare});
        }
        return section;
    }

    static std::string Pdt(const TSection &section) {
        std::string pdt = "def_section name = '" + section.name + "'" + (section.dependent ? " + %n%" : "") +
                          (section.numbered ? section.dependent ? " + '-' + number" : " + number" : "") +
                          (section.dependent ? "; depend_on = %n%" : "") + (section.required ? "; required" : "") +
                          "; var %m%, %v% { init_value = 'vee'; };\n";
        if (!section.dependent) {
            pdt += "def_key name = 'mode'; par = options { option = 'A'; option = 'B'; id = %m% }; end_key\n";
        }
        for (const TKey &key : section.keys) {
            pdt += "def_key name = '" + key.name + "'" + (key.numbered ? " + number" : "") +
                   (key.multiple ? "; multiple;" : ";");
            for (const TPar &par : key.pars) {
                std::string list = par.kind->pdt;
                if (const std::size_t at = list.find('@'); at != std::string::npos) {
                    list.replace(at, 1, par.mode == ' ' ? "" : std::string("; enable_if %m% = '") + par.mode + "'");
                }
                pdt += " par = " + list + ";";
            }
            pdt += " end_key\n";
        }
        return pdt + "end_section\n";
    }

    void MakeTemplate() {
        pdt_ =
            "channels = 9000, 9000, real, input;\n"
            "def_section name = 'Source'; def_key name = 'link'; multiple; par = number { id = %n% }; end_key "
            "end_section\n"
            "def_section name = 'Chan'; var %a%, %b%;"
            " def_key name = 'block'; multiple; channels; par = number { ch_number }; par = number { ch_count; "
            "range_from = 1 };"
            " par = options { option = 'R'; option = 'B'; ch_type 'R' = real; ch_type 'B' = boolean; ch_direction = "
            "output };"
            " end_key"
            " def_key name = 'fixed'; channels; par = number { ch_number; ch_count = 3; ch_type = string }; end_key"
            " def_key name = 'bounds'; channels; par = number { ch_from }; par = number { ch_to; ch_direction = input "
            "}; end_key"
            " def_key name = 'maybe'; channels; par = number { ch_number; optional; ch_count = 2 }; end_key"
            " def_key name = 'group'; par = number { id = %a%; optional }; par = number { id = %b%; optional }; end_key"
            " channels_group { ch_from = %a%; ch_to = %a% + %b% - 1; type %b% > 2, integer; ch_type = real;"
            " direction true, input; type true, real };"
            " end_section\n";
        for (std::uint32_t section = 0, count = 1 + Below(3); section < count; ++section) {
            sections_.push_back(MakeSection("Sec" + std::string(section, 'y') + "-"));
        }
        TSection dependent{"Dep", OneIn(2), false, true, {}};
        dependent.keys.push_back({"text", false, false, {{&kInner[2], ' '}, {&kLast[1], ' '}}, false});
        dependent.keys.push_back({"row", true, true, MakePars(false, true), false});
        sections_.push_back(dependent);
        for (const TSection &section : sections_) {
            pdt_ += Pdt(section);
        }
    }

    /// A line of a key while the mode is the given one.
    std::string Line(const TKey &key, char mode) {
        std::string text = std::string(Below(3), ' ') + key.name + (key.numbered ? Number() : "");
        if (key.bare || OneIn(10)) {
            return text + LineEnd();
        }
        text += OneIn(2) ? " = " : "=";
        std::string values;
        bool whole = true;
        for (const TPar &par : key.pars) {
            if (par.mode != ' ' && par.mode != mode) {
                whole = whole && par.kind != &kLast.back();  // one that reads all does so while it is disabled, too
                continue;
            }
            if (par.kind->may_miss && OneIn(2)) {
                whole = false;
                continue;
            }
            if (!values.empty() && OneIn(6)) {
                whole = false;
                break;
            }
            values += (values.empty() ? "" : Pick(TWords{",", ", ", " , ", "   ", " "})) + Pick(par.kind->values);
        }
        if (values.empty()) {
            return key.name + (key.numbered ? Number() : "") + LineEnd();
        }
        if (whole && OneIn(5)) {
            values += Pick(TWords{" ", " (* note *)", ", more, 'of it'"});
        }
        return text + values + LineEnd();
    }

    std::string Lines(const TSection &section) {
        char mode = '?';
        std::string text;
        if (!section.dependent && OneIn(2)) {
            mode = OneIn(2) ? 'A' : 'B';
            text = std::string("mode= ") + mode + LineEnd();
        }
        for (std::uint32_t count = Below(6); count > 0; --count) {
            text += OneIn(6) ? "(* key = 1" + LineEnd() + " *)" + LineEnd() : Line(Pick(section.keys), mode);
        }
        return text + (OneIn(4) ? UnknownKeys() : "");
    }

    std::string UnknownKeys() {
        std::string text;
        for (std::uint32_t count = Below(3); count > 0; --count) {
            text += Pick(TWords{"  ?odd", "?odd  key", "?"}) +
                    Pick(TWords{"", "=", " = 1,, 2  3 , (x)", " = 'q, r' = [a] ", "= " + Number()}) + LineEnd();
        }
        return text;
    }

    std::string ChannelLines() {
        std::string text;
        const auto first = [this] { return std::to_string(channel_ += 10 + Below(3)); };
        for (std::uint32_t count = Below(4); count > 0; --count) {
            text += "block = " + first() + Pick(TWords{"", ",4", " 2,B", ",3 , R"}) + LineEnd();
        }
        if (OneIn(2)) {
            text += "fixed = " + first() + LineEnd();
        }
        if (OneIn(2)) {
            const std::string from = first();
            text += "bounds = " + from + ", " + std::to_string(channel_ + Below(5)) + LineEnd();
        }
        if (OneIn(2)) {
            text += "maybe = " + first() + LineEnd();
        }
        if (OneIn(2)) {
            text += "group = " + first() + Pick(TWords{"", ",1", ",3", ",5"}) + LineEnd();
        }
        return text;
    }

    std::mt19937 random_;
    std::uint32_t channel_ = 0;
    std::vector<TSection> sections_;  ///< the dependent one is the last
    std::string pdt_;
};

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
    kq_cfg::CConfiguration configuration({});
    std::set<std::string> written;
    constexpr std::uint32_t kTexts = 400;
    for (std::uint32_t seed = 1; seed <= kTexts; ++seed) {
        CGenerator generator(seed);
        const std::string pdt = Bytes(generator.Pdt());
        const std::string par = Bytes(generator.Par());
        SCOPED_TRACE("seed " + std::to_string(seed) + "\n" + kq_base::ToUtf8(pdt) + "----\n" + kq_base::ToUtf8(par));
        configuration.Translate(pdt, par, "");
        ASSERT_TRUE(configuration.Report().result.ok) << kq_base::ToUtf8(configuration.Report().result.message);
        const TWords messages = Messages(configuration.Report());
        ASSERT_TRUE(configuration.Report().Good()) << testing::PrintToString(messages);
        const std::string first = configuration.ParText();
        const std::string table = Table(configuration);

        configuration.Translate(pdt, first, "");
        ASSERT_EQ(Messages(configuration.Report()), messages) << kq_base::ToUtf8(first);
        ASSERT_EQ(kq_base::ToUtf8(configuration.ParText()), kq_base::ToUtf8(first));
        ASSERT_EQ(Table(configuration), table) << kq_base::ToUtf8(first);

        configuration.TranslateForRepair(pdt, first);
        const std::string map = configuration.DmfText();
        configuration.Translate(pdt, first, map);
        ASSERT_TRUE(configuration.Report().Good()) << kq_base::ToUtf8(first) << map;
        ASSERT_EQ(configuration.DmfText(), map);
        ASSERT_EQ(Table(configuration), table) << map;
        written.insert(first);
    }
    EXPECT_GT(written.size(), kTexts * 9 / 10) << "the texts hardly differ";
}

}  // namespace
