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
    /// Puts a recorder into the model, as the only item of an instance.
    static CRecorder &AddTo(kq_pdt::CParSheetData &data) {
        auto section = std::make_unique<kq_pdt::CSectionDef>(&data);
        auto names = std::make_unique<kq_pdt::CItemList>();
        auto recorder = std::make_unique<CRecorder>();
        CRecorder &result = *recorder;
        names->Items().Append(std::move(recorder));
        section->SetNames(std::move(names));
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
        const std::string name = variable != nullptr ? std::string(variable->Name()) : "*";
        log += (log.empty() ? "" : " ") + name + "=" + Shown(value);
        if (action) {
            action(name, value, ok);
        }
    }

    std::string log;
    TAction action;
};
