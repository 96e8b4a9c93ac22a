// What the law is tried on: edits, values and driver maps at random, and modules that differ in what they export.

#include <link.h>

#include <algorithm>
#include <cstring>
#include <sstream>

#include "tests/model/edit_law.h"
#include "tests/model/edit_law_state.h"

namespace {

/// A module that exports one of the names that tell modules apart.
std::string ModuleBytes(const std::string &procedure) {
    static const std::string original = ReadBytes(KQ_MODULE_DIR "/kq_module_gnu.dll");
    std::string bytes = original;
    const auto read = [&](std::size_t at, auto &record) { std::memcpy(&record, bytes.data() + at, sizeof(record)); };
    ElfW(Ehdr) header;
    read(0, header);
    for (std::size_t number = 0; number < header.e_shnum; ++number) {
        ElfW(Shdr) table;
        ElfW(Shdr) names;
        read(header.e_shoff + number * sizeof(table), table);
        read(header.e_shoff + table.sh_link * sizeof(names), names);
        const std::size_t end = table.sh_type == SHT_DYNSYM ? table.sh_offset + table.sh_size : 0;
        for (std::size_t at = table.sh_offset; at < end; at += sizeof(ElfW(Sym))) {
            ElfW(Sym) symbol;
            read(at, symbol);
            const std::string name = bytes.data() + names.sh_offset + symbol.st_name;
            if (name.starts_with("Name") && name != procedure) {
                symbol.st_shndx = SHN_UNDEF;
                std::memcpy(bytes.data() + at, &symbol, sizeof(symbol));
            }
        }
    }
    return bytes;
}

template <class TNodes>
std::uint32_t NumberAmongEquals(const TNodes &nodes, std::size_t index, kq_pdt::CSectionDef *section) {
    const std::string name = NameOf(*nodes[index], section);
    return 1 +
           static_cast<std::uint32_t>(std::count_if(nodes.begin(), nodes.begin() + static_cast<std::ptrdiff_t>(index),
                                                    [&](const auto &node) { return NameOf(*node, section) == name; }));
}

}  // namespace

void CModuleDirectory::Hold(const std::vector<TModule> &modules) {
    kq_pdt::SetHostCallback(&host_);
    const auto same = [](const TModule &left, const TModule &right) { return left.pdt == right.pdt; };
    if (std::equal(modules.begin(), modules.end(), modules_.begin(), modules_.end(), same)) {
        return;
    }
    for (const auto &file : std::filesystem::directory_iterator(".")) {
        std::filesystem::remove(file);
    }
    for (const TModule &module : modules) {
        WriteBytes(module.name + ".dll", ModuleBytes(module.procedure));
        WriteBytes(module.name + ".pdt", module.pdt);
    }
    modules_ = modules;
}

TEdit CLawRun::Choose(CDice &dice) {
    using TKind = TEdit::TKind;
    constexpr std::size_t kManySections = 12;
    constexpr std::size_t kManyKeys = 12;
    TEdit edit;
    const kq_pdt::CParSheetData &data = model_.SheetData();
    const auto &sections = data.Instances().List();
    const std::uint32_t what = dice.Below(100);
    if (const std::uint32_t rows = model_.SheetData().Ranges().RowCount(); what < 5 && rows > 0) {
        edit.kind = TKind::kChannelCell;
        edit.row = dice.Below(rows);
        edit.cell = 3 + dice.Below(2);
        return edit;
    }
    if (sections.empty() || (what < 15 && sections.size() < kManySections)) {
        edit.kind = TKind::kAddSection;
        edit.section = NameOf(*dice.Pick(data.Definitions()));
        return edit;
    }
    const std::size_t index = dice.Below(sections.size());
    kq_pdt::CSectionDef &section = *sections[index];
    edit.section = NameOf(section);
    edit.section_number = NumberAmongEquals(sections, index, nullptr);
    if (what < 22) {
        edit.kind = TKind::kRemoveSection;
        return edit;
    }
    const auto &definitions = section.Definition()->Keys();
    const auto &keys = section.Keys();
    if (what < 45 && !definitions.empty() && keys.size() < kManyKeys) {
        edit.kind = TKind::kAddKey;
        edit.key = NameOf(*dice.Pick(definitions));
        return edit;
    }
    const std::uint32_t name_cells = section.Names()->Items().CountCells();
    if (keys.empty() || (name_cells > 0 && dice.OneIn(5))) {
        edit.cell = 1 + dice.Below(name_cells + 1);
        return edit;
    }
    const std::size_t key = dice.Below(keys.size());
    edit.key = NameOf(*keys[key], &section);
    edit.key_number = NumberAmongEquals(keys, key, &section);
    edit.kind = what < 52 ? TKind::kRemoveKey : TKind::kCell;
    edit.cell = 1 + dice.Below(std::max(1U, keys[key]->GetCellCount() - 1));
    return edit;
}

std::string CLawRun::ChooseValue(const kq_pdt::TCellEditor &editor, CDice &dice) {
    using TWords = std::vector<std::string>;
    if (dice.OneIn(40)) {
        return "!";
    }
    const bool number = editor.item->Code() == kq_pdt::TItemCode::kNumber;
    if (editor.kind == kq_pdt::TCellEditor::TControl::kComboBox) {
        const CComboBox &box = editor.ComboBox();
        if (box.Mode() == CComboBox::TMode::kList || dice.OneIn(4)) {
            return "=" + std::string(box.Entry(box.EntryCount() == 0 ? 0 : 1 + dice.Below(box.EntryCount())));
        }
    }
    if (!number) {
        return "\"" + dice.Pick(TWords{"abc", "x", "Zeta", "text"});
    }
    kq_pdt::CChannelRange range;
    const std::uint32_t rows = model_.SheetData().Ranges().RowCount();
    if (dice.OneIn(2) && rows > 0 && model_.SheetData().Ranges().GetRow(dice.Below(rows), range)) {
        const std::uint32_t near = dice.OneIn(2) ? range.first : range.last;
        return "\"" + std::to_string(near + dice.Below(6) - 2);
    }
    if (dice.OneIn(4)) {
        return "\"" + dice.Pick(TWords{"2147483647", "4294967294", "4294967295", "0", "1", "2", "x1", "", "99999999999",
                                       "-1", "5 ", "abc", "3", "4"});
    }
    const std::uint32_t most = dice.OneIn(2) ? 10 : 130;
    return "\"" + std::to_string(dice.Below(most));
}

std::string ChangeDriverMap(const std::string &dmf, CDice &dice) {
    using TWords = std::vector<std::string>;
    std::string text;
    const auto add = [&text](std::uint32_t first, std::uint32_t last, const std::string &words) {
        text += "  " + std::to_string(first) + " - " + std::to_string(last) + " " + words + "\n";
    };
    for (std::size_t at = 0, end = 0; at < dmf.size(); at = end + 1) {
        end = dmf.find('\n', at);
        const std::string line = dmf.substr(at, end - at);
        std::istringstream words(line);
        std::uint32_t first = 0;
        if (words >> first && dice.OneIn(3)) {
            std::uint32_t last = first;
            if ((words >> std::ws).peek() == '-') {
                words.get();
                words >> last;
            }
            std::string kind;
            std::getline(words >> std::ws, kind);
            const std::uint32_t cut = first + dice.Below(std::size_t{last} - first + 1);
            add(first, cut + (cut == last ? 3 : 0), kind);
            if (cut < last && dice.OneIn(2)) {
                add(cut + 1, last, kind);
            }
            continue;
        }
        for (std::uint32_t count = line == "end." ? dice.Below(3) : 0; count > 0; --count) {
            const std::uint32_t from = 1 + dice.Below(60);
            const std::uint32_t last = from + dice.Below(6);
            const std::string type = dice.Pick(TWords{"real", "boolean", "integer"});
            add(from, last, type + " " + dice.Pick(TWords{"input", "output"}));
        }
        text += line + "\n";
    }
    return text;
}
