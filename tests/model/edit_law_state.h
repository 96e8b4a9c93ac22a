#pragma once

#include <string>

#include "tests/support/model_session.h"

/// The text that a node's name shows; section is that of a key.
std::string NameOf(kq_pdt::CDefNode &node, kq_pdt::CDefNode *section = nullptr);

/// What the law compares, sections in the order of their texts. It leaves out: a row of which no text is written; what
/// a disabled cell holds; of a range that a driver map can't hold, for want of type or direction, all but its bounds.
struct TLawState {
    std::string names;  ///< of the sections
    std::string sections;
    std::string table;
};
TLawState StateUnderLaw(CModelSession &session);

/// Everything: variables, sections, definitions, the table of channels.
std::string WholeState(CModelSession &session);

/// The driver map that a session writes, with plain line ends.
std::string WrittenDmf(CModelSession &session);

/// The sections of a parameter file in the order of their texts, without blanks: a row that isn't written still widens
/// the column of the names.
std::string SortedSections(const std::string &par);

/// The lines of one text that the other one lacks: "- " for the first text's, "+ " for the second's.
std::string Difference(const std::string &first, const std::string &second);
