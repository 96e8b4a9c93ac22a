#include "configurator/row_reading.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "configurator/node_names.h"
#include "configurator/read_time_variables.h"
#include "configurator/value_reading.h"
#include "driver/channels/text_out.h"
#include "model/const_item.h"
#include "model/sheet_data.h"
#include "model/string_item.h"
#include "platform/base/code_page.h"
#include "platform/view/text_view.h"
#include "scanner/text_par_scanner.h"

namespace kq_pdt {

namespace {

/// The header around a line that is scanned: if it doesn't come back, the line has changed what follows it.
constexpr std::string_view kHeader = "[x]\r\n";
constexpr std::string_view kHeaderName = "x";

/// The constant that a name begins with, in capitals, and whether that is the whole name.
struct TBeginning {
    std::string text;
    bool whole = true;
};

TBeginning BeginningOf(const CItemSeq &name) {
    TBeginning beginning;
    for (const auto &item : name.Items()) {
        if (item->Code() != TItemCode::kConst) {
            beginning.whole = false;
            break;
        }
        beginning.text += kq_base::ToUpper(static_cast<const CConstItem &>(*item).Text());
    }
    return beginning;
}

/// Could a line that begins with this name have, when it is read, a name of this beginning? A comment may hide the
/// name.
bool MayRead(std::string_view shown, const TBeginning &beginning) {
    shown.remove_prefix(std::min(shown.find_first_not_of(" \t"), shown.size()));
    const auto same = [](char upper, char any) { return upper == kq_base::ToUpper(any); };
    return shown.find("(*") != std::string_view::npos ||
           (shown.size() >= beginning.text.size() &&
            std::equal(beginning.text.begin(), beginning.text.end(), shown.begin(), same));
}

/// Could one text have both names?
bool MayShareText(const CItemSeq &left, const CItemSeq &right) {
    const TBeginning first = BeginningOf(left);
    const TBeginning second = BeginningOf(right);
    if (first.whole && second.whole) {
        return first.text == second.text;
    }
    return (!second.whole && first.text.starts_with(second.text)) ||
           (!first.whole && second.text.starts_with(first.text));
}

/// True if a row's name is so long that the heads of other rows, which are as wide, are cut before their `=`.
bool CutsOthers(CSectionDef &section, CKeyDef &key) {
    constexpr std::size_t kRoom = kq_base::CTextBuffer::kBound - std::string_view("    = ").size();
    return ShownName(section, key).size() > kRoom &&
           std::any_of(section.Keys().begin(), section.Keys().end(), [&](const auto &other) {
               return other.get() != &key && !other->Has(nfUnrecognised) && !other->Pars().empty();
           });
}

}  // namespace

TRowReading CRowReading::ReadSection(CSectionDef &section) {
    if (section.Names() == nullptr || section.Definition() == nullptr) {
        return {};
    }
    const std::string written = ShownName(section);
    CTextView view;
    CTextOut out(&view);
    out.SectionLine(written);
    out.Insert(kHeader);
    par_scanner::CTextParScanner scanner(view.Text());
    if (!scanner.FirstSection()) {
        return TOutcome::kBroken;
    }
    const std::string name(scanner.SectionName());
    if (scanner.FirstKey() || !scanner.NextSection() || scanner.SectionName() != kHeaderName || scanner.FirstKey() ||
        scanner.NextSection()) {
        return TOutcome::kBroken;
    }
    CSectionDef *const found = MatchSection(section, name);
    if (section.Has(nfUnrecognised)) {
        return found != nullptr ? TOutcome::kOtherRow : name != written ? TOutcome::kBroken : TOutcome::kSame;
    }
    if (found == nullptr) {
        return name.empty() ? TOutcome::kNoName : TOutcome::kUnknownName;
    }
    const bool is_instance = found->Definition() != nullptr;
    if ((is_instance ? found->Definition() : found) != section.Definition()) {
        // Of dependent sections that show one name each gets a text of its own.
        return is_instance && written == name && ShownName(*found) == name ? TOutcome::kSame : TOutcome::kOtherRow;
    }
    return CompareName(section, nullptr, &found->Names()->Items(), name, false);
}

/// The definition or instance whose name a text is, as the reader looks for it; null if it would stay unknown.
CSectionDef *CRowReading::MatchSection(CSectionDef &section, std::string_view name) {
    CParSheetData &data = *section.SheetData();
    const auto match = [&]() -> CSectionDef * {
        matcher_.Begin(name);
        for (CSectionDef *each : sections_) {
            matcher_.AddPattern(each->Names()->Items(), each, nullptr);
        }
        return matcher_.RunSilently() ? sections_[matcher_.Winner()] : nullptr;
    };
    sections_.clear();
    for (const auto &definition : data.Definitions()) {
        if (definition->Names() != nullptr && !definition->Has(nfUnrecognised)) {
            sections_.push_back(definition.get());
        }
    }
    CSectionDef *const definition = match();
    if (definition != nullptr && definition->DependOn() == nullptr) {
        return definition;
    }
    data.Instances().Index().FindCandidates(name, sections_);
    std::erase_if(sections_, [](const CSectionDef *each) { return each->Has(nfUnrecognised); });
    return match();
}

TRowReading CRowReading::ReadKey(CSectionDef &section, CKeyDef &key) {
    if (section.Definition() == nullptr) {
        return {};
    }
    const TOutcome outcome = ScanKey(section, key);
    if (outcome != TOutcome::kSame) {
        return outcome;
    }
    return key.Has(nfUnrecognised) ? ReadUnknownKey(section, key) : ReadKnownKey(section, key);
}

/// Writes the row's line and cuts it into name and values.
TRowReading::TOutcome CRowReading::ScanKey(CSectionDef &section, CKeyDef &key) {
    CTextView view;
    CTextOut out(&view);
    out.Insert(kHeader);
    {
        const CScopeGuard scope(&section);
        CColumnWidths widths;
        key.MeasureKey(widths);
        key.WriteKey(out, widths);
    }
    has_line_ = view.Text().size() != kHeader.size();
    values_.clear();
    separators_.clear();
    if (!has_line_) {
        return TOutcome::kSame;
    }
    if (key.Names() == nullptr || section.Names() == nullptr) {
        return TOutcome::kNoName;
    }
    out.Insert(kHeader);
    par_scanner::CTextParScanner scanner(view.Text());
    const bool begins = scanner.FirstSection() && scanner.SectionName() == kHeaderName;
    const bool has_key = begins && scanner.FirstKey();
    if (has_key) {
        name_ = scanner.KeyName();
        std::string_view text;
        scanner.KeyPars(text);
        raw_ = text;
        std::uint32_t separator = 0;
        for (bool more = scanner.FirstValue(text); more; more = scanner.NextValue(text, separator)) {
            values_.emplace_back(text);
            separators_.push_back(par_scanner::TokenKindText(separator));
        }
    }
    const bool alone = begins && !(has_key && scanner.NextKey()) && scanner.NextSection() &&
                       scanner.SectionName() == kHeaderName && !scanner.FirstKey() && !scanner.NextSection();
    if (!alone) {
        return TOutcome::kBroken;
    }
    return has_key ? TOutcome::kSame : TOutcome::kNoName;
}

TRowReading CRowReading::ReadUnknownKey(CSectionDef &section, CKeyDef &key) {
    const bool known_section = !section.Has(nfUnrecognised);
    if (known_section && MatchKey(*section.Definition(), name_) != nullptr) {
        return TOutcome::kOtherRow;
    }
    const CItem &item = *key.Pars().front()->Items().Items().front();
    const bool same = name_ == ShownName(section, key) && raw_ == static_cast<const CStringItem &>(item).Value();
    return same ? TRowReading() : TRowReading{TOutcome::kOtherValue, &item, raw_};
}

TRowReading CRowReading::ReadKnownKey(CSectionDef &section, CKeyDef &key) {
    const CKeyDef *const definition = key.Definition();
    const bool repeated = definition->Has(nfMultiple);
    if (!has_line_ && repeated) {
        return TOutcome::kNotWritten;
    }
    if (has_line_ && CutsOthers(section, key)) {
        return TOutcome::kLongName;
    }
    TRowReading reading;
    const CKeyDef *const found = has_line_ ? MatchKey(*section.Definition(), name_) : nullptr;
    if (has_line_ && found != definition) {
        return found == nullptr ? TOutcome::kUnknownName : TOutcome::kOtherRow;
    }
    if (key.Names() != nullptr) {
        reading = CompareName(section, &key, found != nullptr ? &found->Names()->Items() : nullptr, name_, repeated);
    }
    if (reading.outcome == TOutcome::kSame) {
        reading = ReadValues(section, key);
    }
    if (reading.outcome == TOutcome::kSame && !repeated && IsOverwritten(section, key)) {
        reading.outcome = TOutcome::kOverwritten;
    }
    return reading;
}

/// The definition that a line's name belongs to, as the reader looks for it.
const CKeyDef *CRowReading::MatchKey(const CSectionDef &definition, std::string_view name) {
    matcher_.Begin(name);
    keys_.clear();
    for (const auto &key : definition.Keys()) {
        if (key->Names() != nullptr) {
            matcher_.AddPattern(key->Names()->Items(), const_cast<CSectionDef *>(&definition), key.get());
            keys_.push_back(key.get());
        }
    }
    return matcher_.RunSilently() ? keys_[matcher_.Winner()] : nullptr;
}

/// Compares a name with what the last match has cut, without a pattern with that of a new row.
TRowReading CRowReading::CompareName(CSectionDef &section, CKeyDef *key, const CItemSeq *pattern, std::string_view text,
                                     bool replaced) {
    CItemList &names = key != nullptr ? *key->Names() : *section.Names();
    CValueReading reading(names.Items());
    if (pattern != nullptr && replaced) {
        if (!reading.ReplaceByCuts(*pattern, matcher_.Cuts(), text)) {
            return TOutcome::kUnknownName;
        }
    } else if (pattern != nullptr) {
        reading.TakeCuts(*pattern, matcher_.Cuts(), text);
    }
    const CScopeGuard section_scope(&section);
    const CScopeGuard key_scope(key);
    if (pattern == nullptr) {
        reading.TakeDefaults();
    }
    TRowReading result;
    result.item = reading.FindDifference(result.text);
    result.outcome = result.item != nullptr ? TOutcome::kOtherValue : TOutcome::kSame;
    return result;
}

TRowReading CRowReading::ReadValues(CSectionDef &section, CKeyDef &key) {
    const CScopeGuard section_scope(&section);
    const CScopeGuard key_scope(&key);
    const auto &pars = key.Pars();
    std::vector<CValueReading> readings;
    readings.reserve(pars.size());
    std::size_t value = 0;
    std::optional<CReadTimeVariables> variables(std::in_place, section, key);
    for (const auto &par : pars) {
        CValueReading &reading = readings.emplace_back(par->Items());
        if (value == values_.size() || !par->AnyEnabled()) {
            continue;
        }
        if (TakeValue(values_[value], section, key, *par, reading)) {
            ++value;
            variables->Publish(par->Items());
        } else if (!par->AllOptional()) {
            const auto &items = par->Items().Items();
            const auto cell =
                std::find_if(items.begin(), items.end(), [](const auto &item) { return item->GetCellCount() != 0; });
            return {TOutcome::kRefused, cell != items.end() ? cell->get() : nullptr, values_[value]};
        }
    }
    variables.reset();
    const bool reads_all = !pars.empty() && pars.back()->Items().ReadsAll();
    for (; reads_all && value < values_.size(); ++value) {
        readings.back().AppendRaw(separators_[value], values_[value]);
    }
    TRowReading result;
    for (CValueReading &reading : readings) {
        reading.TakeDefaults();
        result.item = result.item == nullptr ? reading.FindDifference(result.text) : result.item;
    }
    result.outcome = result.item != nullptr ? TOutcome::kOtherValue : TOutcome::kSame;
    return result;
}

bool CRowReading::TakeValue(std::string_view value, CSectionDef &section, CKeyDef &key, CParDef &par,
                            CValueReading &reading) {
    matcher_.Begin(value);
    matcher_.AddPattern(par.Items(), &section, &key);
    if (!matcher_.RunSilently()) {
        return false;
    }
    reading.TakeCuts(par.Items(), matcher_.Cuts(), value);
    return true;
}

/// True if the line of another row has a name that belongs to this key's definition.
bool CRowReading::IsOverwritten(CSectionDef &section, CKeyDef &key) {
    const CSectionDef &definition = *section.Definition();
    const CKeyDef *const own = key.Definition();
    if (own->Names() == nullptr) {
        return false;
    }
    const bool competes = std::any_of(definition.Keys().begin(), definition.Keys().end(), [&](const auto &other) {
        return other.get() != own && other->Names() != nullptr &&
               MayShareText(own->Names()->Items(), other->Names()->Items());
    });
    const TBeginning beginning = competes ? BeginningOf(own->Names()->Items()) : TBeginning();
    return competes && std::any_of(section.Keys().begin(), section.Keys().end(), [&](const auto &other) {
               const CKeyDef *const theirs = other->Definition();
               return other.get() != &key && theirs != nullptr && theirs->Names() != nullptr &&
                      MayRead(ShownName(section, *other), beginning) &&
                      MayShareText(own->Names()->Items(), theirs->Names()->Items()) &&
                      ScanKey(section, *other) == TOutcome::kSame && has_line_ && MatchKey(definition, name_) == own;
           });
}

}  // namespace kq_pdt
