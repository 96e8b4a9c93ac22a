// What file and template don't have in common: keys and sections that the template doesn't know are kept as they are,
// and sections that it requires are added where the file lacks them.

#include "model/const_item.h"
#include "model/par_reader.h"
#include "model/sheet_data.h"
#include "model/string_item.h"
#include "model/texts.h"
#include "scanner/par_scanner.h"

namespace kq_pdt {

/// Keeps a key that the template doesn't know as one constant and one text.
void CParReader::AddUnknownKey(std::string_view text, std::string_view value, CSectionDef &section) {
    auto key = std::make_unique<CKeyDef>(&sheet_data_);
    key->SetFlag(nfUnrecognised);
    key->SetLabel(text);
    auto names = std::make_unique<CItemList>();
    names->Items().Append(std::make_unique<CConstItem>(text));
    key->SetNames(std::move(names));
    auto item = std::make_unique<CStringItem>();
    item->ParseValue(value, 0, static_cast<std::uint32_t>(value.size()));
    item->SetAttribute(kwComment, formText, texts::kUnknownKeyComment, nullptr);
    key->AddPar().Items().Append(std::move(item));
    section.AddKey(std::move(key));
}

void CParReader::AddUnknownSection(const TParSectionRef &section) {
    auto unknown = std::make_unique<CSectionDef>(&sheet_data_);
    unknown->SetFlag(nfUnrecognised);
    auto names = std::make_unique<CItemList>();
    names->Items().Append(std::make_unique<CConstItem>(section.name));
    unknown->SetNames(std::move(names));
    CSectionDef &definition = sheet_data_.AppendDefinition(std::move(unknown));
    scanner_->SetActSectionHandle(section.handle);
    for (bool more = scanner_->FirstKey(); more; more = scanner_->NextKey()) {
        std::string_view value;
        scanner_->KeyPars(value);
        AddUnknownKey(scanner_->KeyName(), value, definition);
    }
    sheet_data_.Instances().Append(definition.Clone(true));
    Warn(texts::kUnknownSection, section.name, section.line);
}

void CParReader::CheckRequiredSections() {
    std::vector<CSectionDef *> added;
    for (const auto &definition : sheet_data_.Definitions()) {
        if (!definition->Has(nfRequired) || sheet_data_.Instances().Has(*definition)) {
            continue;
        }
        CSectionDef &section = sheet_data_.Instances().Append(definition->Clone(true));
        added.push_back(&section);
        kq_base::CTextBuffer name;
        if (section.Names() != nullptr) {
            const CScopeGuard scope(&section);
            std::uint32_t index = 1;
            bool disabled = false;
            section.Names()->Items().GetCell(index, name, disabled);
        }
        Warn(texts::kMissingSection, name.View(), kNoNumber);
    }
    const CInstances::CHold hold(sheet_data_.Instances());
    for (CSectionDef *section : added) {
        Publish(*section);
        section->CommitChannels();
    }
    PublishAdditions();
    if (!added.empty()) {
        sheet_data_.Assignments().SettleRoot();
        PublishAdditions();
    }
}

/// What came in addition: dependent sections, and required ones of modules, which are published already. Sections that
/// one of them creates count with it, however far down, so that templates whose sections create each other come to an
/// end.
void CParReader::PublishAdditions() {
    const CSectionList &list = sheet_data_.Instances().List();
    // NOLINTNEXTLINE(modernize-loop-convert): the list grows on the way.
    for (std::size_t index = 0; index < list.size(); ++index) {
        CSectionDef &section = *list[index];
        const CSectionDef *definition = section.Definition();
        if (section.WasTaken() || definition == nullptr || section.Serial() <= published_) {
            continue;
        }
        published_ = section.Serial();
        if (definition->DependOn() == nullptr && !definition->Has(nfModule)) {
            continue;
        }
        const std::uint32_t last = list.back()->Serial();
        const std::uint32_t itself = definition->DependOn() != nullptr ? 1 : 0;
        const auto count =
            created_.try_emplace(section.Serial(), std::make_shared<std::uint32_t>(itself)).first->second;
        {
            const CAssignments::CCommonCount common(sheet_data_.Assignments(), *count);
            PublishAddition(section);
        }
        for (auto created = list.rbegin(); created != list.rend() && (*created)->Serial() > last; ++created) {
            created_.emplace((*created)->Serial(), count);
        }
    }
}

void CParReader::PublishAddition(CSectionDef &section) {
    if (section.Definition()->DependOn() != nullptr) {
        section.PublishTree();
    }
    if (!section.IsReleased()) {
        sheet_data_.Assignments().CreateAsFromText(section);
        section.CommitChannels();
    }
}

}  // namespace kq_pdt
