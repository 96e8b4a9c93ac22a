#pragma once

#include "configurator/kq_cfg.h"
#include "model/sheet_data.h"

/// Turns the model into the plain records of the public interface.
namespace kq_cfg {

TExpr Describe(const kq_pdt::CExpression &expression);
TItem Describe(kq_pdt::CItem &item);
TSection Describe(const kq_pdt::CSectionDef &section);
TVariables Describe(const kq_pdt::CVarScope *scope);
TValue Describe(const TParValue &value);
TItemKind KindOf(const kq_pdt::CItem &item);
std::vector<TChannel> Describe(const kq_pdt::CChannelRangeTable &ranges);

}  // namespace kq_cfg
