// From a case that breaks the law to the smallest one that breaks it in the same way, and to a script that shows it.

#include <algorithm>
#include <utility>

#include "tests/model/edit_law.h"

namespace {

using TLines = std::vector<std::string>;

TLines LinesOf(const std::string &text) {
    TLines lines;
    for (std::size_t at = 0, end = 0; at < text.size(); at = end + 1) {
        end = std::min(text.find('\n', at), text.size());
        lines.push_back(text.substr(at, end - at));
    }
    return lines;
}

/// The line behind the block that begins at one: a section or key of a template, a section of a parameter file.
std::size_t BlockEnd(const TLines &lines, std::size_t first) {
    const std::string &head = lines[first];
    const std::string close = head == "def_section" ? "end_section" : head == "def_key" ? "end_key" : "";
    if (close.empty() && !head.starts_with('[')) {
        return first + 1;
    }
    const auto end = std::find(lines.begin() + static_cast<std::ptrdiff_t>(first), lines.end(), close);
    return static_cast<std::size_t>(end - lines.begin()) + (end == lines.end() ? 0 : 1);
}

bool HasNumberRole(const std::string &line) {
    const TLines roles = {"ch_from;", "ch_to;", "ch_number;", "ch_count"};
    return std::any_of(roles.begin(), roles.end(),
                       [&](const std::string &role) { return line.find(role) != std::string::npos; });
}

/// True if a part publishes what the default of a string depends on: without it the text would be empty.
bool Feeds(const std::string &part, const std::string &text) {
    for (std::size_t at = part.find("id = %"); at != std::string::npos; at = part.find("id = %", at + 1)) {
        const std::string name = part.substr(at + 5, part.find('%', at + 6) - at - 4);
        if (text.find("string { default = " + name) != std::string::npos) {
            return true;
        }
    }
    return false;
}

/// What a template can't do without if it is to be read again: names, what keeps rows written and variables apart, the
/// numbers of a block.
bool IsNeeded(const std::string &text, const TLines &lines, std::size_t at) {
    const auto first = lines.begin() + static_cast<std::ptrdiff_t>(at);
    const auto end = lines.begin() + static_cast<std::ptrdiff_t>(BlockEnd(lines, at));
    if (std::any_of(first, end, [&](const std::string &line) { return Feeds(line, text); })) {
        return true;
    }
    if (first->starts_with("var %")) {
        const std::string name = first->substr(4, first->size() - 5);
        return text.find(name, text.find(*first) + first->size()) != std::string::npos;
    }
    if (*first == "def_key") {
        return std::any_of(first, end, HasNumberRole) && std::find(first, end, "channels;") == end;
    }
    return first->starts_with("name =") || first->starts_with("depend_on") || HasNumberRole(*first) ||
           *first == "par = '.';" || *first == "multiple;" || (at > 0 && lines[at - 1] == "name = 'Main';");
}

/// An attribute by its position in a text. The items of a list share their condition.
bool IsNeeded(const std::string &text, std::size_t at, const std::string &attribute) {
    const std::string ahead = text.substr(0, at + 1);
    const std::size_t line = ahead.rfind('\n') + 1;
    const bool joined = text.substr(line, text.find('\n', at) - line).find(" + ") != std::string::npos;
    return (joined && attribute.starts_with(" enable_if")) || attribute == " write_if_all" ||
           attribute.starts_with(" procedure") || HasNumberRole(attribute + ";") || ahead.ends_with("string {") ||
           ahead.ends_with("options {") || Feeds(attribute, text);
}

class CShrinker {
public:
    CShrinker(CModuleDirectory &directory, TCase start, std::string cause)
        : directory_(directory), best_(std::move(start)), cause_(std::move(cause)) {}

    TCase Result() {
        StartBeforeTheLastEdit();
        for (bool smaller = true; smaller && runs_ < kMaxRuns;) {
            smaller = Drop([](TCase & from) -> auto & { return from.edits; });
            smaller = Drop([](TCase & from) -> auto & { return from.pdt.modules; }) || smaller;
            for (std::size_t text = 0; text < Texts(best_).size(); ++text) {
                smaller = DropLines(text) || smaller;
                smaller = DropAttributes(text) || smaller;
            }
        }
        return best_;
    }

private:
    static constexpr int kMaxRuns = 6000;

    static std::vector<std::string *> Texts(TCase &from) {
        std::vector<std::string *> texts = {&from.pdt.pdt, &from.par, &from.dmf};
        for (TModule &module : from.pdt.modules) {
            texts.push_back(&module.pdt);
        }
        return texts;
    }
    bool Keeps(const TCase &candidate) {
        if (++runs_ > kMaxRuns || RunCase(directory_, candidate).cause != cause_) {
            return false;
        }
        best_ = candidate;
        return true;
    }
    void StartBeforeTheLastEdit() {
        TCase before = best_;
        if (before.edits.empty()) {
            return;
        }
        before.edits.pop_back();
        CLawRun run(directory_, before);
        for (TEdit &edit : before.edits) {
            run.Step(edit, nullptr);
        }
        Keeps({best_.pdt, run.Par(), run.Dmf(), {best_.edits.back()}});
    }
    /// Without one of the elements of a list, each in turn.
    template <class TList>
    bool Drop(TList list) {
        bool smaller = false;
        for (std::size_t at = list(best_).size(); at-- > 0;) {
            TCase candidate = best_;
            list(candidate).erase(list(candidate).begin() + static_cast<std::ptrdiff_t>(at));
            smaller = Keeps(candidate) || smaller;
        }
        return smaller;
    }
    bool DropLines(std::size_t text) {
        bool smaller = false;
        for (std::size_t at = 0; at < LinesOf(*Texts(best_)[text]).size();) {
            const TLines lines = LinesOf(*Texts(best_)[text]);
            const std::size_t end = BlockEnd(lines, at);
            TCase candidate = best_;
            std::string &changed = *Texts(candidate)[text];
            changed.clear();
            for (std::size_t line = 0; line < lines.size(); ++line) {
                changed += line < at || line >= end ? lines[line] + "\n" : "";
            }
            const bool dropped = !IsNeeded(*Texts(best_)[text], lines, at) && Keeps(candidate);
            smaller = dropped || smaller;
            at += dropped ? 0 : 1;
        }
        return smaller;
    }
    /// An attribute lies between two semicolons, or the brace and the first one.
    bool DropAttributes(std::size_t text) {
        bool smaller = false;
        for (std::size_t at = 0; at < Texts(best_)[text]->size();) {
            TCase candidate = best_;
            std::string &changed = *Texts(candidate)[text];
            const std::size_t end = std::min(changed.find_first_of(";\n", at + 1), changed.size() - 1);
            const std::string attribute = changed.substr(at + 1, end - at - 1);
            const bool found = attribute.find_first_of("{}") == std::string::npos &&
                               (changed[at] == '{' || changed[at] == ';') && changed[end] == ';' &&
                               !IsNeeded(changed, at, attribute);
            changed.erase(at + 1, end - at);
            const bool dropped = found && Keeps(candidate);
            smaller = dropped || smaller;
            at += dropped ? 0 : 1;
        }
        return smaller;
    }

    CModuleDirectory &directory_;
    TCase best_;
    std::string cause_;
    int runs_ = 0;
};

std::string Numbered(const std::string &name, std::uint32_t number) {
    return number > 1 ? name + "#" + std::to_string(number) : name;
}

std::string Command(const TEdit &edit) {
    using TKind = TEdit::TKind;
    if (edit.kind == TKind::kChannelCell) {
        return "# in the table of channels: row " + std::to_string(edit.row + 1) + ", column " +
               std::to_string(edit.cell) + ": " + edit.value;
    }
    const bool adds = edit.kind == TKind::kAddSection || edit.kind == TKind::kAddKey;
    std::string path = Numbered(edit.section, edit.section_number);
    path += edit.key.empty() ? "" : "/" + Numbered(edit.key, edit.key_number);
    if (edit.kind == TKind::kCell) {
        path += ":" + std::to_string(edit.cell) + "=" + edit.value.substr(edit.value.empty() ? 0 : 1);
    }
    return std::string("kqcfg ") +
           (adds                        ? "add"
            : edit.kind == TKind::kCell ? "set"
                                        : "remove") +
           " t.pdt t.par --modules . --dmf t.dmf --dmf-out t.dmf -o t.par '" + path + "'" +
           (edit.value == "!" ? "  # cancelled" : "");
}

std::string File(const std::string &name, const std::string &text) {
    return "cat > " + name + " <<'END_OF_FILE'\n" + text + "END_OF_FILE\n";
}

}  // namespace

TFailure RunCase(CModuleDirectory &directory, const TCase &start) {
    CLawRun run(directory, start);
    std::vector<TEdit> edits = start.edits;
    if (run.IsReadable() && run.Failure().cause.empty()) {
        std::all_of(edits.begin(), edits.end(), [&](TEdit &edit) { return run.Step(edit, nullptr); });
    }
    return run.Failure();
}

TCase Shrink(CModuleDirectory &directory, const TCase &start, const std::string &cause) {
    return CShrinker(directory, start, cause).Result();
}

std::string Script(const TCase &start) {
    std::string text = File("t.pdt", start.pdt.pdt) + File("t.par", start.par) + File("t.dmf", start.dmf);
    for (const TModule &module : start.pdt.modules) {
        text += File(module.name + ".pdt", module.pdt) + "# " + module.name + ".dll: a module that exports " +
                module.procedure + " and no other Name..\n";
    }
    for (const TEdit &edit : start.edits) {
        text += Command(edit) + "\n";
    }
    return text + "kqcfg check t.pdt t.par --modules . --dmf t.dmf\nkqcfg format t.pdt t.par --modules . --dmf t.dmf\n";
}
