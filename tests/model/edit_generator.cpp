#include "tests/model/edit_generator.h"

#include <algorithm>

namespace {

using TWords = std::vector<std::string>;

const TWords kTypes = {"boolean", "real", "integer", "string"};
const TWords kDirections = {"input", "output", "bidirectional"};
constexpr std::uint32_t kMaxDepth = 3;        ///< of dependent sections
constexpr std::uint32_t kMaxModuleDepth = 2;  ///< of modules that bring `dll` items
constexpr std::uint32_t kMaxProcedures = 20;

/// A published value that what follows may depend on.
struct TVariable {
    std::string name;
    TWords texts;       ///< what it may hold; empty for a number
    bool sure = false;  ///< it always has a value
};
using TVariables = std::vector<TVariable>;

struct TItem {
    std::string word;
    TWords attributes;

    bool Has(const char *attribute) const {
        return std::find(attributes.begin(), attributes.end(), attribute) != attributes.end();
    }
    void Add(const TWords &more) { attributes.insert(attributes.end(), more.begin(), more.end()); }
    /// Each attribute with its semicolon, since a bare `ch_count` needs it.
    std::string Text() const {
        std::string text = word + " {";
        for (const std::string &attribute : attributes) {
            text += " " + attribute + ";";
        }
        return attributes.empty() ? word : text + " }";
    }
};

/// A variable that dependent sections hang on, and how deep in a chain they are.
struct TSource {
    std::string variable;
    std::uint32_t depth = 0;
    bool sure = true;  ///< it always has a value, so what follows it in a name is matched where it was written
};

class CGenerator {
public:
    CGenerator(std::uint32_t seed, const TKnobs &knobs) : dice_(seed), knobs_(knobs) {}

    TTemplate Make() {
        TTemplate made;
        made.pdt = Chance("fixed_channels") ? "channels = 20, 23, real, input, 'Fixed';\n" : "";
        made.pdt += Section({}, true);
        made.pdt += Sections(dice_.Below(3));
        // Modules whose templates hold `dll` items again bring modules of a deeper level.
        std::uint32_t done = 0;
        for (module_depth_ = 1; done < procedures_; ++module_depth_) {
            for (const std::uint32_t end = procedures_; done < end; ++done) {
                switch_ = Switch(done);
                for (const char *suffix : {"a", "b"}) {
                    made.modules.push_back(
                        {"M" + Procedure(done) + suffix, Procedure(done), Sections(1 + dice_.Below(2))});
                }
            }
        }
        std::string switches;
        for (std::uint32_t procedure = 0; procedure < done + 1; ++procedure) {
            switches += "par = '" + Switch(procedure) + ":' + number { optional; write_if_all; id = %" +
                        Switch(procedure) + "%; };\n";
        }
        if (done > 0) {
            made.pdt.insert(made.pdt.find("def_key"), "def_key\nname = 'switches';\n" + switches + "end_key\n");
        }
        return made;
    }

private:
    bool Chance(std::string_view knob) { return dice_.Below(100) < knobs_.find(knob)->second; }

    /// A name of its own, of which none is the beginning of another one once a constant with '-' follows.
    std::string Name(const char *prefix) {
        const std::uint32_t number = names_++;
        return prefix + std::string(1, static_cast<char>('a' + number / 26)) + static_cast<char>('a' + number % 26);
    }
    std::string Number(std::uint32_t least, std::uint32_t most) {
        return std::to_string(least + dice_.Below(most - least + 1));
    }
    std::string Mark() { return std::string("'") + static_cast<char>('a' + marks_++) + ":'"; }
    /// One of those that the modules of the tests export.
    static std::string Procedure(std::uint32_t number) {
        return "Name" + std::to_string(10 * (1 + number / 4) + number % 4);
    }

    /// What the first section and the modules of a procedure publish to switch those of later ones. A module's name is
    /// taken from a text while it is switched off, too, so this needn't be published before.
    static std::string Switch(std::uint32_t procedure) { return "w" + std::to_string(procedure); }

    /// A variable that is published before the item at hand; null without one.
    const TVariable *Known(bool number, bool sure) {
        std::vector<const TVariable *> found;
        for (const TVariables *scope : {&root_, &section_, &key_}) {
            for (const TVariable &variable : *scope) {
                // What a module or a value brings comes while the first section is still being published.
                const bool early = sure && scope == &root_ && (depth_ > 0 || module_depth_ > 0);
                if (variable.texts.empty() == number && (!sure || variable.sure) && !early) {
                    found.push_back(&variable);
                }
            }
        }
        return found.empty() ? nullptr : dice_.Pick(found);
    }

    std::string Comparison() {
        const bool number = dice_.OneIn(2);
        const TVariable *variable = Known(number, false);
        variable = variable == nullptr ? Known(!number, false) : variable;
        if (variable == nullptr) {
            return "";
        }
        if (!variable->texts.empty()) {
            const std::string text = "%" + variable->name + "% = '" + dice_.Pick(variable->texts) + "'";
            return dice_.OneIn(3) ? "not " + text : text;
        }
        return NumberComparison(variable->name);
    }
    std::string NumberComparison(const std::string &variable) {
        const std::string name = "%" + variable + "%";
        return dice_.Pick(TWords{"not " + name + " = " + Number(0, 9), name + " = nedef", "0 = " + name + " mod 2",
                                 name + " < " + Number(1, 9), name + " > " + Number(0, 9), name + " > 4"});
    }
    std::string Condition() {
        const std::string first = Comparison();
        const std::string second = dice_.OneIn(5) ? Comparison() : "";
        return second.empty() ? first : first + (dice_.OneIn(2) ? " and " : " or ") + second;
    }

    /// Lets the item publish its value now and then, in the scope of the key, the section or the root.
    void Publish(TItem &item, const TWords &texts, bool sure) {
        if (!Chance("publishers")) {
            return;
        }
        TVariable variable{"", texts, sure};
        if (texts.empty() && !switch_.empty() && Chance("module_switches")) {
            variable.name = switch_;
        } else if (depth_ < kMaxDepth && Chance("sources") && (sure || Chance("missing_sources"))) {
            const bool shared = !sources_.empty() && sources_.back().depth == depth_ + 1 && Chance("shared_sources");
            variable.name = shared ? sources_.back().variable : Name("d");
            if (!shared) {
                sources_.push_back({variable.name, depth_ + 1});
            }
            sources_.back().sure = sources_.back().sure && sure;
        } else if (const std::uint32_t scope = dice_.Below(3); scope == 0 && in_key_) {
            variable.name = key_names_.emplace_back(Name("k"));
            key_.push_back(variable);
        } else if (scope < 2 || !first_) {
            variable.name = section_names_.emplace_back(Name("s"));
            (multiple_key_ ? late_ : section_).push_back(variable);
        } else {
            variable.name = Name("r");
            variable.sure = sure && !multiple_key_;
            (multiple_key_ ? late_root_ : root_).push_back(variable);
        }
        item.Add({"id = %" + variable.name + "%"});
    }

    TItem NumberItem(bool optional, bool may_compute, const char *defaults = "defaults") {
        TItem item{"number", dice_.Pick<TWords>({{}, {"range_from = 2", "range_to = 90"}, {"range_to = 9"}})};
        if (!optional && Chance(defaults)) {
            const TVariable *variable = may_compute ? Known(true, false) : nullptr;
            item.Add({variable != nullptr ? "default = %" + variable->name + "% + " + Number(1, 4)
                                          : "default = " + Number(2, 9)});
        }
        return item;
    }
    /// Whatever isn't optional has a default, since the form can't hold an empty text.
    TItem StringItem(bool optional, bool may_compute) {
        const TVariable *variable = may_compute && dice_.OneIn(2) ? Known(false, true) : nullptr;
        const std::string text = variable != nullptr ? "%" + variable->name + "%" : "'text'";
        return {"string", optional ? TWords() : TWords{"default = " + text}};
    }
    TItem OptionsItem(TWords &texts, const char *labels, const TWords &from) {
        texts.assign(from.begin(), from.end() - dice_.Below(2));
        TItem item{"options", {}};
        const bool labelled = Chance(labels);
        for (const std::string &text : texts) {
            item.Add({"option = '" + text + "'" + (labelled ? " label = 'Is " + text + "'" : "")});
        }
        return item;
    }

    /// A line whose value is recognisable if it may be missing: by a constant of its own, or since it is the last one.
    std::string Par(bool last, bool plain) {
        const bool optional = !plain && Chance("optional");
        const std::string condition = !plain && Chance("conditions") ? Condition() : "";
        const bool marked = optional ? !last || dice_.OneIn(2) : dice_.OneIn(6);
        const bool paired = !optional && !marked && dice_.OneIn(6);
        const std::uint32_t kind = paired ? 2 * dice_.Below(2) : dice_.Below(3);
        TWords texts = kind == 1 ? TWords{"text", "abc"} : TWords();
        TItem item = kind == 0   ? NumberItem(optional, !paired)
                     : kind == 1 ? StringItem(optional, condition.empty())
                                 : OptionsItem(texts, "labels", {"A", "AB", "C"});
        for (const char *word : {"label", "comment", "bubble", "nedef"}) {
            item.Add(Chance("remarks") ? TWords{word + std::string(" = 'The ") + word + "'"} : TWords());
        }
        item.Add(optional ? TWords{"optional"} : TWords());
        Publish(item, texts, !optional && condition.empty());
        std::vector<TItem> items(1, item);
        if (marked) {
            items.insert(items.begin(), {Mark(), {}});
        } else if (paired) {
            items.push_back({kind == 0 ? "':'" : "'-'", {}});
            items.push_back(NumberItem(false, true));
        }
        std::string line = "par =";
        for (TItem &each : items) {
            item = each;
            item.Add(condition.empty() ? TWords() : TWords{"enable_if " + condition});
            const bool ends = &each == &items.back() && items.size() > 1 && (optional || !condition.empty());
            item.Add(ends ? TWords{"write_if_all"} : TWords());
            line += (&each == items.data() ? " " : " + ") + item.Text();
        }
        row_is_written_ = row_is_written_ || (!optional && condition.empty());
        return line + ";";
    }

    /// The list of a name: a constant, or something variable after it.
    std::string VariableName(const char *prefix) {
        const std::string constant = "'" + Name(prefix);
        if (!Chance("variable_names")) {
            return constant + "'";
        }
        const std::uint32_t kind = Chance("name_strings") ? 2 : 1 + 2 * dice_.Below(2);
        TWords texts = kind == 2 ? TWords{"text", "abc"} : TWords();
        TItem item = kind == 3   ? OptionsItem(texts, "labels", {"A", "AB", "C"})
                     : kind == 2 ? StringItem(false, false)
                                 : NumberItem(false, false, "name_defaults");
        if (Chance("name_publishers")) {
            Publish(item, texts, true);
        }
        return constant + "-' + " + item.Text();
    }

    /// Gives the items of a block its type or direction, in one of the ways that there are.
    void AddWords(const std::string &role, const TWords &words, std::vector<TItem> &items) {
        if (Chance("free_words")) {
            return;
        }
        TItem &carrier = items[dice_.OneIn(2) ? 0 : items.size() - 1];
        const bool number = carrier.word == "number";
        const auto add_rows = [&](TItem &item, TWords texts, const std::string &variable) {
            texts.resize(texts.size() - (Chance("partial_rows") ? 1 : 0));
            for (const std::string &text : texts) {
                item.Add({role + variable + " '" + text + "' = " + dice_.Pick(words)});
            }
        };
        const TVariable *variable = number && Chance("word_variables") ? Known(dice_.OneIn(3), false) : nullptr;
        if (variable != nullptr) {
            const TWords texts = variable->texts.empty() ? TWords{"2", "3", "4"} : variable->texts;
            add_rows(carrier, texts, " %" + variable->name + "%");
        } else if (number && Chance("number_words")) {
            add_rows(carrier, {"1", "2", "3"}, "");
        } else if (dice_.OneIn(2)) {
            items.front().Add({role + " = " + dice_.Pick(words)});
        } else {
            TWords texts;
            TItem options = OptionsItem(texts, "word_labels", {"P", "Q", "R"});
            add_rows(options, texts, "");
            items.push_back(options);
        }
    }

    /// The items that describe a block, the numbers first.
    std::vector<TItem> ChannelItems() {
        const std::uint32_t form = dice_.Below(3);
        std::vector<TItem> items = {{"number", {form == 2 ? "ch_from" : "ch_number"}}};
        if (form == 0) {
            items[0].Add({"ch_count = " + Number(1, 4)});
        } else {
            items.push_back({"number", {form == 1 ? "ch_count" : "ch_to"}});
        }
        if (form == 1 && !Chance("free_counts")) {
            items[1].Add({"range_from = 1", "range_to = 8"});
        }
        for (TItem &item : items) {
            item.Add(Chance("optional_numbers") ? TWords{"optional"} : TWords());
        }
        AddWords("ch_type", kTypes, items);
        AddWords("ch_direction", kDirections, items);
        return items;
    }
    /// A line with a role, with a constant of its own if it may be missing.
    std::string RolePar(TItem item) {
        const bool optional = item.Has("optional");
        row_is_written_ = row_is_written_ || !optional;
        item.Add(optional ? TWords{"write_if_all"} : TWords());
        return "par = " + (optional ? Mark() + " + " : "") + item.Text() + ";";
    }

    std::string GroupWords(const std::string &role, const TWords &words) {
        if (!Chance("group_rows")) {
            return " ch_" + role + " = " + dice_.Pick(words) + ";";
        }
        const std::string condition = Condition();
        const std::string row = condition.empty() ? "" : " " + role + " " + condition + ", " + dice_.Pick(words) + ";";
        return !row.empty() && dice_.OneIn(8) ? row : row + " " + role + " true, " + dice_.Pick(words) + ";";
    }
    /// A block whose bounds follow one of the numbers, or two; mostly far from the blocks of others.
    std::string Group(const TVariables &numbers) {
        if (numbers.empty()) {
            return "";
        }
        const std::string first = "%" + dice_.Pick(numbers).name + "%";
        const std::string second = "%" + numbers.back().name + "%";
        offset_ += 200;
        const bool near = dice_.OneIn(3);
        const auto far = [&](std::uint32_t more) { return " + " + std::to_string(offset_ + more); };
        const TWords ends = near ? TWords{first + " + 3", second, first + " + " + second + " - 1"}
                                 : TWords{first + far(3), second + far(60), first + " + " + second + far(0)};
        std::string text = "channels_group { ch_from = " + first + (near ? "" : far(0)) + "; ch_to = ";
        text += dice_.Pick(ends) + ";";
        text += GroupWords("type", kTypes);
        return text + GroupWords("direction", kDirections) + " };\n";
    }

    std::string Key(const std::string &name, const std::string &flags, const TWords &pars, const std::string &tail) {
        std::string text = "def_key\n";
        for (const std::string &variable : key_names_) {
            text += "var %" + variable + "%;\n";
        }
        text += "name = " + name + ";\n" + (multiple_key_ ? "multiple;\n" : "") + flags;
        text += Chance("remarks") ? "label = 'Key';\n" : "";
        for (const std::string &par : pars) {
            text += par + "\n";
        }
        key_names_.clear();
        key_.clear();
        marks_ = 0;
        multiple_key_ = false;
        row_is_written_ = false;
        return text + tail + "end_key\n";
    }
    /// A line that may have nothing to write gets a constant value, or its name would be lost and what it publishes.
    TWords Kept(TWords pars, const std::string &name, bool may_vanish) {
        if ((multiple_key_ || name.find('+') != std::string::npos) && !row_is_written_ && !may_vanish &&
            !pars.empty()) {
            pars.insert(pars.begin(), "par = '.';");
        }
        return pars;
    }
    std::string PlainKey() {
        multiple_key_ = Chance("multiple");
        const std::size_t published = late_.size() + late_root_.size() + sources_.size();
        const std::string name = VariableName("k");
        TWords pars;
        for (std::uint32_t count = dice_.Below(10) == 0 ? 0 : 1 + dice_.Below(3); count > 0; --count) {
            pars.push_back(Par(count == 1, false));
        }
        const bool publishes = published != late_.size() + late_root_.size() + sources_.size();
        return Key(name, "", Kept(pars, name, multiple_key_ && !publishes && Chance("bare_rows")), "");
    }
    std::string ChannelKey() {
        multiple_key_ = Chance("multiple");
        TWords pars = dice_.OneIn(3) ? TWords{Par(false, true)} : TWords();
        std::vector<TItem> items = ChannelItems();
        std::string name = "'" + Name("k");
        if (Chance("channel_names") && !items.front().Has("optional")) {
            name += "-' + " + items.front().Text();
            items.erase(items.begin());
        } else {
            name += "'";
        }
        if (dice_.OneIn(4)) {
            std::reverse(items.begin(), items.end());
        }
        for (const TItem &item : items) {
            pars.push_back(RolePar(item));
        }
        if (dice_.OneIn(3)) {
            pars.push_back(Par(true, false));
        }
        return Key(name, "channels;\n", Kept(pars, name, false), "");
    }
    std::string GroupKey() {
        multiple_key_ = Chance("multiple");
        const std::string name = VariableName("k");
        TVariables numbers;
        TWords pars;
        for (std::uint32_t count = 1 + dice_.Below(2); count > 0; --count) {
            numbers.push_back({key_names_.emplace_back(Name("k")), {}, false});
            TItem item{"number", {"range_from = 1", "range_to = 60", "id = %" + key_names_.back() + "%"}};
            item.Add(dice_.OneIn(3) ? TWords{"optional"} : TWords());
            pars.push_back(RolePar(item));
        }
        return Key(name, "", Kept(pars, name, false), Group(numbers));
    }
    std::string ModuleKey() {
        TItem item{"dll", {"procedure = '" + Procedure(procedures_++) + "'"}};
        std::string condition = Chance("conditions") ? Condition() : "";
        if (Chance("module_switches")) {
            const std::uint32_t other = dice_.Below(procedures_);
            condition = NumberComparison(Switch(other + (other + 1 < procedures_ ? 0 : 1)));
        }
        item.Add(condition.empty() ? TWords() : TWords{"enable_if " + condition});
        return Key("'" + Name("k") + "'", "", {"par = " + item.Text() + ";"}, "");
    }

    std::string Section(const TSource &source, bool first) {
        first_ = first;
        in_key_ = false;
        depth_ = source.depth;
        const bool depends = depth_ > 0;
        const bool multiple = !first && Chance(depends ? "multiple_dependents" : "multiple");
        std::string name = first     ? "'Main'"
                           : depends ? "'" + (Chance("namesakes") ? "D" : Name("D")) + "-' + %" + source.variable + "%"
                                     : VariableName("S");
        in_key_ = true;
        std::string flags = multiple ? "multiple;\n" : "";
        const bool may_be_required = !depends && (!multiple || module_depth_ == 0 || Chance("repeated_modules"));
        flags += first || (may_be_required && Chance("required")) ? "required;\n" : "";
        flags += depends ? "depend_on = %" + source.variable + "%;\n" : "";
        std::string keys;
        const bool channels = !first && Chance("section_channels");
        const std::vector<TItem> items = channels ? ChannelItems() : std::vector<TItem>();
        flags += channels ? "channels;\n" : "";
        for (const TItem &item : items) {
            if (!item.Has("optional") && source.sure && Chance("channel_names")) {
                name += " + '-' + " + item.Text();
            } else {
                keys += Key("'" + Name("k") + "'", "", {RolePar(item)}, "");
            }
        }
        for (std::uint32_t count = (first ? 2 : 1) + dice_.Below(3); count > 0; --count) {
            const bool may_load =
                !multiple && !depends && procedures_ < kMaxProcedures && module_depth_ < kMaxModuleDepth;
            keys += !channels && Chance("channel_keys") ? ChannelKey()
                    : !channels && Chance("group_keys") ? GroupKey()
                    : may_load && Chance("module_keys") ? ModuleKey()
                                                        : PlainKey();
        }
        std::string text = "def_section\nname = " + name + ";\n";
        for (const std::string &variable : section_names_) {
            text.insert(text.find('\n') + 1, "var %" + variable + "%;\n");
        }
        TVariables numbers;
        for (const TVariables *scope : {&section_, &late_}) {
            std::copy_if(scope->begin(), scope->end(), std::back_inserter(numbers),
                         [](const TVariable &variable) { return variable.texts.empty(); });
        }
        text += flags + keys + (Chance("section_groups") ? Group(numbers) : "") + "end_section\n";
        root_.insert(root_.end(), late_root_.begin(), late_root_.end());
        for (TVariables *scope : {&section_, &late_, &late_root_}) {
            scope->clear();
        }
        section_names_.clear();
        return text;
    }
    /// Sections, and for each value that was published for it another one, for those that these publish as well.
    std::string Sections(std::uint32_t count) {
        std::string text;
        for (; count > 0; --count) {
            text += Section({}, false);
        }
        // NOLINTNEXTLINE(modernize-loop-convert): the list grows on the way.
        for (std::size_t source = 0; source < sources_.size(); ++source) {
            text += Section(TSource(sources_[source]), false);
        }
        sources_.clear();
        return text;
    }

    CDice dice_;
    const TKnobs &knobs_;
    std::uint32_t names_ = 0;
    std::uint32_t offset_ = 0;  ///< of the next group's numbers
    std::uint32_t procedures_ = 0;
    std::uint32_t module_depth_ = 0;
    std::string switch_;           ///< of the module at hand
    bool first_ = false;           ///< of the section at hand: it is the first one
    std::uint32_t depth_ = 0;      ///< of the section at hand in a chain of dependent ones
    bool in_key_ = false;          ///< or in the section's own name
    bool multiple_key_ = false;    ///< of the key at hand
    bool row_is_written_ = false;  ///< the key at hand has a value that is always written
    std::uint32_t marks_ = 0;      ///< constants that the key at hand has used
    TVariables root_;
    TVariables section_;
    TVariables key_;
    TVariables late_;       ///< published by rows of the section at hand, so settled at its end only
    TVariables late_root_;  ///< the same in the scope of the root
    TWords section_names_;
    TWords key_names_;
    std::vector<TSource> sources_;
};

}  // namespace

TKnobs MakeKnobs(std::string_view changes) {
    const std::string all =
        std::string(
            "conditions=25,defaults=35,optional=25,publishers=30,remarks=15,labels=30,variable_names=35,multiple=45,"
            "required=30,bare_rows=5,channel_keys=40,section_channels=12,optional_numbers=20,channel_names=25,"
            "free_words=20,partial_rows=10,number_words=15,word_labels=5,word_variables=25,free_counts=20,group_keys="
            "15,"
            "section_groups=15,group_rows=40,sources=15,missing_sources=15,shared_sources=20,multiple_dependents=15,"
            "name_defaults=20,name_strings=25,name_publishers=50,module_keys=8,module_switches=30,namesakes=20,"
            "repeated_modules=20,"
            "fixed_channels=20,"
            "driver_map=40") +
        (changes.empty() ? "" : ",") + std::string(changes);
    TKnobs knobs;
    for (std::size_t at = 0, end = 0; at < all.size(); at = end + 1) {
        end = std::min(all.find(',', at), all.size());
        const std::size_t equals = all.find('=', at);
        knobs[all.substr(at, equals - at)] = static_cast<std::uint32_t>(std::stoul(all.substr(equals + 1)));
    }
    return knobs;
}

TTemplate MakeTemplate(std::uint32_t seed, const TKnobs &knobs) { return CGenerator(seed, knobs).Make(); }
