#pragma once

#include <cstdint>

#include "model/journal.h"

namespace kq_pdt {

/// What a sheet over the model wants to know of it.
class CModelListener {
public:
    virtual ~CModelListener() = default;
    /// An edit was taken. The steps take it back as long as nothing else has changed since; whoever keeps them also
    /// keeps a CInstances::CHold and an open CChannelTransaction from before the first edit, and lets them go before
    /// the model is cleared (ModelCleared).
    virtual void EditTaken(CJournal::TSteps && /*steps*/) {}
    /// Template and instances are about to be forgotten.
    virtual void ModelCleared() {}
    /// A row came into a table that is known, or left it; rows count from 1. Not while a parameter file is read.
    virtual void RowsChanged(std::uint32_t /*table*/, std::uint32_t /*row*/, bool /*inserted*/) {}
};

}  // namespace kq_pdt
