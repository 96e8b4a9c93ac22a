#pragma once

#include <functional>
#include <memory>
#include <string>

#include "model/section_def.h"
#include "model/sheet_data.h"
#include "platform/base/number_text.h"

/// An item in an instance that notes every value that a variable takes, and may act on it.
class CRecorder final : public kq_pdt::CItem {
public:
    using TAction = std::function<void(const std::string &name, const TParValue &value, bool &ok)>;

    CRecorder() : CItem(kq_pdt::TItemCode::kOptions) {}
    /// Puts a recorder into the model, as the only item of an instance whose definition refers to these variables.
    static CRecorder &AddTo(kq_pdt::CParSheetData &data, const std::vector<std::string> &names = {}) {
        kq_pdt::CExpression::TNodes nodes;
        for (const std::string &name : names) {
            nodes.push_back({.kind = kq_pdt::TExprKind::kReference, .value = TParValue::Text(name)});
        }
        const auto list_of = [](std::unique_ptr<kq_pdt::CItem> item) {
            auto list = std::make_unique<kq_pdt::CItemList>();
            list->Items().Append(std::move(item));
            return list;
        };
        auto model = std::make_unique<kq_pdt::CItem>(kq_pdt::TItemCode::kPlain);
        model->EditAttributes().default_value =
            kq_pdt::CDefaultValue(std::make_unique<kq_pdt::CExpression>(data, std::move(nodes)));
        auto definition = std::make_unique<kq_pdt::CSectionDef>(&data);
        definition->SetNames(list_of(std::move(model)));
        auto recorder = std::make_unique<CRecorder>();
        CRecorder &result = *recorder;
        auto section = data.AppendDefinition(std::move(definition)).Clone(true);
        section->SetNames(list_of(std::move(recorder)));
        data.Instances().Append(std::move(section));
        return result;
    }
    static std::string Shown(const TParValue &value) {
        return value.kind == TParKind::pvText        ? "'" + std::string(value.text.View()) + "'"
               : value.IsNumber()                    ? kq_base::DecimalText(value.number)
               : value.kind == TParKind::pvUndefined ? "?"
                                                     : "-";
    }

    void ParameterChanged(const kq_pdt::CVariable *variable, const TParValue &value, bool &ok) override {
        const std::string name(variable->Name());
        log += (log.empty() ? "" : " ") + name + "=" + Shown(value);
        if (action) {
            action(name, value, ok);
        }
    }

    std::string log;
    TAction action;
};
