#include "model/def_node.h"

#include <cassert>

#include "model/journal.h"
#include "model/sheet_data.h"

namespace kq_pdt {

CDefNode::~CDefNode() {
    if (row_id_ != 0) {
        sheet_data_->TableChanged(*this, row_id_, 0);
    }
}

void CDefNode::SetRowId(std::uint32_t id) {
    if (id != row_id_) {
        sheet_data_->TableChanged(*this, row_id_, id);
        CJournal::Note([this, old_id = row_id_] { SetRowId(old_id); });
        row_id_ = id;
    }
}

void CDefNode::SetNames(std::unique_ptr<CItemList> names) {
    names->Items().SetNode(this);
    names_ = std::move(names);
}

void CDefNode::AddGroupItem(std::unique_ptr<CChannelsGroupItem> item) { groups_.push_back(std::move(item)); }

CVariable &CDefNode::DeclareVariable(std::string_view name) {
    if (!scope_) {
        scope_ = std::make_unique<CVarScope>();
        scope_->SetOwner(sheet_data_);
        scope_->SetNode(this);
    }
    return scope_->Declare(name);
}

void CDefNode::EnterScope() {
    ++entered_;
    if (scope_) {
        sheet_data_->RootScope().Push(scope_.get());
    }
}

void CDefNode::LeaveScope() {
    --entered_;
    if (scope_) {
        sheet_data_->RootScope().Pop();
    }
}

void CDefNode::CapturedValueChanged(const TParValue & /*value*/, const CVariable * /*variable*/) {}

void CDefNode::BindVariable(CVariable & /*variable*/) {}

void CDefNode::ParameterChanged(const CVariable *variable, const TParValue &value, bool &ok) {
    for (const auto &group : groups_) {
        group->ParameterChanged(variable, value, ok);
    }
}

void CDefNode::CloneInto(CDefNode &node) const {
    for (const auto &group : groups_) {
        node.AddGroupItem(group->CloneGroup());
    }
    node.flags_ = flags_;
    if (scope_) {
        node.scope_ = scope_->Clone();
        node.scope_->SetNode(&node);
    }
}

void CDefNode::GiveBack() {
    for (const auto &group : groups_) {
        group->GiveBack();
    }
    RemoveRange();
    if (names_) {
        names_->Items().GiveBack();
    }
}

void CDefNode::Done() {
    for (const auto &group : groups_) {
        group->Done();
    }
    groups_.clear();
    RemoveRange();
}

void CDefNode::ReleaseScope() {
    assert(!scope_ || scope_->UseCount() == 0);
    scope_.reset();
}

}  // namespace kq_pdt
