#include "tests/model/edit_law_state.h"

#include <algorithm>

using kq_pdt::CKeyDef;
using kq_pdt::CScopeGuard;
using kq_pdt::CSectionDef;
using kq_pdt::TCellField;

namespace {

/// A variable that nothing was stored in reads like one that isn't there.
void AppendVariables(std::string &text, const kq_pdt::CVarScope &scope) {
    for (const auto &[name, variable] : scope.Variables()) {
        const TParValue &value = variable->Stored();
        const std::string shown = value.kind == TParKind::pvText     ? " '" + std::string(value.text.View()) + "'"
                                  : value.kind == TParKind::pvNumber ? " " + std::to_string(value.number)
                                                                     : " undefined";
        text += value.kind == TParKind::pvNone ? "" : "%" + name + "%" + shown + "\n";
    }
}

/// The value, label and comment of the cells of a key, or of a name.
template <class TNode>
void AppendCells(std::string &text, TNode &node, std::uint32_t count, bool law) {
    for (std::uint32_t cell = 1; cell <= count; ++cell) {
        for (const TCellField field : {TCellField::kValue, TCellField::kLabel, TCellField::kComment}) {
            kq_base::CTextBuffer buffer;
            bool disabled = false;
            std::uint32_t index = cell;
            node.GetCellInfo(index, buffer, field, disabled);
            const std::string shown(buffer.View());
            if (field == TCellField::kValue) {
                text += disabled ? " [off" + (law ? "" : " " + shown) + "]" : " [" + shown + "]";
            } else {
                text += shown.empty() ? "" : " " + shown;
            }
        }
    }
}

bool IsWritten(CKeyDef &key) {
    const CScopeGuard scope(&key);
    return key.Pars().empty() || std::any_of(key.Pars().begin(), key.Pars().end(), [](const auto &par) {
               kq_base::CTextBuffer text;
               return par->AppendText(text);
           });
}

std::string SectionState(CSectionDef &section, bool law) {
    std::string text = "[" + NameOf(section) + "] flags " + std::to_string(section.Flags());
    const CScopeGuard scope(&section);
    if (section.Names() != nullptr) {
        AppendCells(text, section.Names()->Items(), section.Names()->Items().CountCells(), law);
    }
    text += "\n";
    if (!law && section.Scope() != nullptr) {
        AppendVariables(text, *section.Scope());
    }
    for (const auto &key : section.Keys()) {
        if (law && key->Has(kq_pdt::nfMultiple) && !IsWritten(*key)) {
            continue;
        }
        text += "  " + NameOf(*key) + " (" + std::string(key->Label().View()) + ")";
        AppendCells(text, *key, key->GetCellCount() - 1, law);
        text += "\n";
        if (!law && key->Scope() != nullptr) {
            AppendVariables(text, *key->Scope());
        }
    }
    return text;
}

std::string TableState(CModelSession &session, bool law) {
    const auto word = [](std::uint32_t code, bool is_free) {
        return (code == kq_pdt::kUndefinedCode ? " ?" : " " + std::string(kq_pdt::KeywordText(code))) +
               (is_free ? " free" : "");
    };
    std::string text;
    kq_pdt::CChannelRange range;
    for (std::uint32_t row = 0; session.SheetData().Ranges().GetRow(row, range); ++row) {
        const bool open = range.type == kq_pdt::kUndefinedCode || range.direction == kq_pdt::kUndefinedCode;
        if (law && open && !range.defined) {
            continue;
        }
        text += std::to_string(range.first) + "-" + std::to_string(range.last);
        text += law && open ? " open"
                            : word(range.type, range.typeFree) + word(range.direction, range.directionFree) +
                                  (range.defined ? " defined " : " ") + std::string(range.name.View());
        text += "\n";
    }
    return text;
}

std::string Sorted(std::vector<std::string> texts) {
    std::sort(texts.begin(), texts.end());
    std::string all;
    for (const std::string &text : texts) {
        all += text;
    }
    return all;
}

}  // namespace

std::string NameOf(kq_pdt::CDefNode &node, kq_pdt::CDefNode *section) {
    kq_base::CTextBuffer text;
    const CScopeGuard outer(section);
    const CScopeGuard scope(&node);
    if (node.Names() != nullptr) {
        node.Names()->Items().AppendText(text);
    }
    return std::string(text.View());
}

TLawState StateUnderLaw(CModelSession &session) {
    std::vector<std::string> names;
    std::vector<std::string> sections;
    for (const auto &section : session.SheetData().Instances().List()) {
        names.push_back(NameOf(*section) + "\n");
        sections.push_back(SectionState(*section, true));
    }
    return {Sorted(names), Sorted(sections), TableState(session, true)};
}

std::string WholeState(CModelSession &session) {
    std::string text;
    AppendVariables(text, session.SheetData().RootScope());
    for (const auto &section : session.SheetData().Instances().List()) {
        text += SectionState(*section, false);
    }
    text += std::to_string(session.SheetData().Definitions().size()) + " definitions\n";
    return text + TableState(session, false);
}

std::string WrittenDmf(CModelSession &session) {
    session.WriteDmf();
    std::string text(session.DmfView().Text());
    std::erase(text, '\r');
    return text;
}

std::string SortedSections(const std::string &par) {
    std::vector<std::string> sections;
    for (std::size_t at = 0, end = 0; at < par.size(); at = end) {
        end = par.find("\n\n", at);
        end = end == std::string::npos ? par.size() : end + 2;
        sections.push_back(par.substr(at, end - at));
        std::erase(sections.back(), ' ');
    }
    return Sorted(sections);
}

std::string Difference(const std::string &first, const std::string &second) {
    std::string result;
    const auto add_missing = [&](const std::string &text, const std::string &other, const char *mark) {
        for (std::size_t at = 0, end = 0; at < text.size(); at = end + 1) {
            end = std::min(text.find('\n', at), text.size());
            const std::string line = text.substr(at, end - at);
            if (("\n" + other).find("\n" + line + "\n") == std::string::npos) {
                result += mark + line + "\n";
            }
        }
    };
    add_missing(first, second, "- ");
    add_missing(second, first, "+ ");
    return result.empty() ? "the same lines, in another number or order\n" + first + "----\n" + second : result;
}
