#include "model/instances.h"

#include <algorithm>
#include <map>
#include <string>

#include "model/journal.h"
#include "model/sheet_data.h"

namespace kq_pdt {

namespace {

/// The position in the list of the section with this serial number, or where it belongs.
CSectionList::iterator PositionOf(CSectionList &list, std::uint32_t serial) {
    return std::lower_bound(list.begin(), list.end(), serial,
                            [](const auto &other, std::uint32_t number) { return other->Serial() < number; });
}

/// Dependent sections that show one name, ascending positions in the list.
using TNamesakes = std::vector<std::size_t>;

/// Namesakes of different definitions.
std::vector<TNamesakes> FindNamesakes(const CSectionList &list) {
    std::map<std::string, TNamesakes> by_name;
    std::vector<TNamesakes> found;
    for (std::size_t position = 0; position < list.size(); ++position) {
        CSectionDef &section = *list[position];
        if (section.Definition() != nullptr && section.Definition()->DependOn() != nullptr && section.Names()) {
            const CScopeGuard scope(&section);
            kq_base::CTextBuffer name;
            section.Names()->Items().AppendText(name);
            by_name[std::string(name.View())].push_back(position);
        }
    }
    for (auto &[name, namesakes] : by_name) {
        const CSectionDef *first = list[namesakes.front()]->Definition();
        if (std::any_of(namesakes.begin(), namesakes.end(),
                        [&](std::size_t position) { return list[position]->Definition() != first; })) {
            found.push_back(std::move(namesakes));
        }
    }
    return found;
}

/// Numbers the dependent sections in the order in which a reading creates them: for what a section's text holds, then
/// for what it leaves open.
std::map<const CSectionDef *, std::size_t> CreationOrder(const CSectionList &list) {
    std::map<const CSectionDef *, std::size_t> order;
    for (const auto &section : list) {
        std::vector<const CSectionDef *> left_open;
        const auto visit = [&](const CItemSeq &items) {
            for (const auto &item : items.Items()) {
                if (const CSectionDef *dependent = item->Dependent()) {
                    if (item->IsWritten()) {
                        order.emplace(dependent, order.size());
                    } else {
                        left_open.push_back(dependent);
                    }
                }
            }
        };
        const auto visit_name = [&](CDefNode &node) {
            if (node.Names() != nullptr) {
                visit(node.Names()->Items());
            }
        };
        visit_name(*section);
        for (const auto &key : section->Keys()) {
            visit_name(*key);
            for (const auto &par : key->Pars()) {
                visit(par->Items());
            }
        }
        for (const CSectionDef *dependent : left_open) {
            order.emplace(dependent, order.size());
        }
    }
    return order;
}

/// The sections as they are written. A reading gives the texts of one name to its sections in the order in which it
/// creates them, so namesakes of different definitions are written in that order.
std::vector<CSectionDef *> WritingOrder(const CSectionList &list) {
    std::vector<CSectionDef *> written;
    for (const auto &section : list) {
        written.push_back(section.get());
    }
    const std::vector<TNamesakes> all = FindNamesakes(list);
    const std::map<const CSectionDef *, std::size_t> order =
        all.empty() ? std::map<const CSectionDef *, std::size_t>() : CreationOrder(list);
    const auto number = [&order](const CSectionDef *section) {
        const auto found = order.find(section);
        return found != order.end() ? found->second : order.size();
    };
    for (const TNamesakes &namesakes : all) {
        std::vector<CSectionDef *> sorted;
        for (const std::size_t position : namesakes) {
            sorted.push_back(list[position].get());
        }
        std::stable_sort(sorted.begin(), sorted.end(), [&](const CSectionDef *left, const CSectionDef *right) {
            return number(left) < number(right);
        });
        for (std::size_t index = 0; index < sorted.size(); ++index) {
            written[namesakes[index]] = sorted[index];
        }
    }
    return written;
}

}  // namespace

CSectionDef &CInstances::Append(std::unique_ptr<CSectionDef> section) {
    section->SetSerial(next_serial_++);
    list_.push_back(std::move(section));
    CSectionDef &appended = *list_.back();
    index_.Add(appended);
    CJournal::Note([this, &appended] {
        const auto found = PositionOf(list_, appended.Serial());
        index_.Remove(appended);
        appended.Retire();
        buried_.push_back(std::move(*found));
        TellRow(found, false);
        list_.erase(found);
    });
    TellRow(list_.end() - 1, true);
    return appended;
}

std::size_t CInstances::IndexOf(const CSectionDef &section) {
    return static_cast<std::size_t>(PositionOf(list_, section.Serial()) - list_.begin());
}

/// Sections are the rows of table 1.
void CInstances::TellRow(CSectionList::iterator position, bool inserted) {
    data_.RowsChanged(1, static_cast<std::size_t>(position - list_.begin()) + 1, inserted);
}

void CInstances::Renamed(CSectionDef &section) { index_.Rename(section); }

void CInstances::Release(CSectionDef &section) {
    const CHold hold(*this);
    const auto found = PositionOf(list_, section.Serial());
    if (found == list_.end() || found->get() != &section) {
        return;
    }
    std::unique_ptr<CSectionDef> released = std::move(*found);
    TellRow(found, false);
    list_.erase(found);
    index_.Remove(section);
    CJournal::Note([this, &section] {
        const auto back =
            list_.insert(PositionOf(list_, section.Serial()), std::unique_ptr<CSectionDef>(Unbury(section)));
        index_.Add(section);
        TellRow(back, true);
    });
    Bury(std::move(released));
    section.SheetData()->Post(cmRebuildTable, section.RowId());
    section.GiveBack();
    section.Retire();
}

void CInstances::ReleaseOf(const CSectionDef &definition) {
    // What an instance holds may take others along, so each is looked up anew.
    while (CSectionDef *instance = index_.FirstOf(&definition)) {
        Release(*instance);
    }
}

/// From the back, since an instance may take those that its module brought along with it.
void CInstances::Clear() {
    index_.ForgetNames();
    while (!list_.empty()) {
        std::unique_ptr<CSectionDef> section = std::move(list_.back());
        list_.pop_back();
        index_.Remove(*section);
        section->Done();
    }
}

void CInstances::Write(CTextOut &out) const {
    for (CSectionDef *section : WritingOrder(list_)) {
        section->WriteSection(out);
    }
}

void CInstances::Bury(std::unique_ptr<CDefNode> node) {
    buried_.push_back(std::move(node));
    EndReleased();
}

CSectionDef *CInstances::Unbury(const CSectionDef &section) {
    // What is taken back was buried last.
    const auto buried = std::find_if(buried_.rbegin(), buried_.rend(),
                                     [&section](const auto &other) { return other.get() == &section; });
    CDefNode *node = buried->release();
    buried_.erase(std::prev(buried.base()));
    return static_cast<CSectionDef *>(node);
}

/// The oldest first: a definition outlives its instances, which were released before it.
void CInstances::EndReleased() {
    while (holds_ == 0 && !CJournal::IsActive() && !buried_.empty() && !buried_.front()->IsEntered()) {
        buried_.erase(buried_.begin());
    }
}

}  // namespace kq_pdt
