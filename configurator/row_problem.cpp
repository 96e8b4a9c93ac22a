#include "configurator/row_problem.h"

#include "configurator/row_reading.h"
#include "configurator/texts.h"
#include "model/string_item.h"

namespace kq_pdt {

namespace {

using TOutcome = TRowReading::TOutcome;

std::string Quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

std::string ValueName(const CItem *item) {
    std::string text(texts::kValueWord);
    if (item != nullptr && !item->Attributes().label.IsEmpty()) {
        text += " " + Quoted(item->Attributes().label.View());
    }
    return text;
}

/// A hint where a text without quotes holds what separates values.
std::string_view Hint(const CItem *item) {
    if (item == nullptr || item->Code() != TItemCode::kString) {
        return {};
    }
    const std::string_view text = static_cast<const CStringItem &>(*item).Value();
    const bool separated = text.find_first_of(" ,") != std::string_view::npos && !text.starts_with('\'');
    return separated ? texts::kValueSeparated : std::string_view();
}

std::string ProblemText(const TRowReading &reading) {
    switch (reading.outcome) {
        case TOutcome::kSame:
            return {};
        case TOutcome::kNotWritten:
            return std::string(texts::kRowNotWritten);
        case TOutcome::kNoName:
            return std::string(texts::kRowWithoutName);
        case TOutcome::kBroken:
            return std::string(texts::kRowBroken);
        case TOutcome::kLongName:
            return std::string(texts::kRowNameLong);
        case TOutcome::kUnknownName:
            return std::string(texts::kRowNameUnknown);
        case TOutcome::kOtherRow:
            return std::string(texts::kRowNameTaken);
        case TOutcome::kOverwritten:
            return std::string(texts::kRowOverwritten);
        case TOutcome::kOtherValue:
            return ValueName(reading.item).append(texts::kValueDiffers) + Quoted(reading.text) +
                   std::string(Hint(reading.item));
        case TOutcome::kRefused:
            break;
    }
    return reading.text.empty() ? ValueName(reading.item).append(texts::kValueEmpty)
                                : ValueName(reading.item).append(texts::kValueRefused) + Quoted(reading.text);
}

}  // namespace

std::string SectionProblem(CSectionDef &section) { return ProblemText(CRowReading().ReadSection(section)); }

std::string KeyProblem(CSectionDef &section, CKeyDef &key) { return ProblemText(CRowReading().ReadKey(section, key)); }

}  // namespace kq_pdt
