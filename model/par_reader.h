#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "model/matcher.h"
#include "model/section_def.h"

namespace par_scanner {
class CParScanner;
}

namespace kq_pdt {

class CParSheetData;

/// Reads the text of a parameter file into instances of a compiled template.
///
/// It can't go from top to bottom: which definition a section belongs to may depend on a value further down, and a
/// module that is chosen brings new definitions along. So it runs in passes; each reads what it can and leaves the
/// rest for the next. What no pass could read is kept as an unknown section. Nothing stops the reading; warnings and
/// errors go to the window.
class CParReader {
public:
    explicit CParReader(CParSheetData &sheet_data) : sheet_data_(sheet_data) {}

    void Read(std::string_view text);

private:
    /// A section of the text that waits to be read.
    struct TParSectionRef {
        std::string name;
        std::uint32_t handle = 0;
        std::uint32_t line = 0;
        bool came_back = false;  ///< it was read into a section that went with its module
    };
    using TPending = std::vector<TParSectionRef>;

    /// True if any section was read.
    bool RunPass(const TPending &pending, TPending &retry);
    bool ReadSection(const TParSectionRef &section);
    bool FollowModules(TPending &retry);
    bool RefreshModule();
    CSectionDef *MatchDefinition(std::string_view name, std::unique_ptr<CItemSeq> &results);
    CSectionDef *MatchCandidates(std::string_view name, std::unique_ptr<CItemSeq> &results);
    CSectionDef *MatchInstance(std::string_view name, std::unique_ptr<CItemSeq> &results);
    void PassOverKeys(CSectionDef &instance, const CKeyDef &key, std::size_t &next);
    bool HasLine(CSectionDef &instance, const CKeyDef &key);
    void NoteLines(const CSectionDef &instance);
    void ReadKeys(CSectionDef &definition, CSectionDef &instance);
    const CKeyDef *MatchKey(std::string_view text, CSectionDef &definition, std::unique_ptr<CItemSeq> &results);
    std::unique_ptr<CKeyDef> NewKey(const CKeyDef &definition, const CItemSeq *results);
    CKeyDef *KeyFor(std::string_view text, CSectionDef &definition, CSectionDef &instance);
    void ReadValues(std::string_view key_text, CSectionDef &instance, CKeyDef &key);
    bool TakeValue(std::string_view value, bool has_separator, std::uint32_t separator, CSectionDef &instance,
                   CKeyDef &key, CParDef &par);
    void ReportRefusedValue(std::string_view key_text, std::string_view value);
    void Publish(CSectionDef &section);
    void AddUnknownKey(std::string_view text, std::string_view value, CSectionDef &section);
    void AddUnknownSection(const TParSectionRef &section);
    void CheckRequiredSections();
    void PublishAdditions();
    void PublishAddition(CSectionDef &section);
    void Warn(std::string_view text1, std::string_view text2, std::uint32_t line);

    CParSheetData &sheet_data_;
    par_scanner::CParScanner *scanner_ = nullptr;
    CMatcher matcher_;
    std::vector<CSectionDef *> candidates_;
    std::vector<CNameIndex::TEntry> names_;
    std::vector<std::string_view> lines_;                  ///< the keys of the section's lines, until HasLine asks
    std::unordered_set<const CDefNode *> keys_with_line_;  ///< their definitions, once it has asked
    /// What was read into sections that may go again with their module.
    std::vector<std::pair<TParSectionRef, std::weak_ptr<CSectionDef *>>> read_;
    TPending lost_;  ///< what is kept as unknown, since it keeps switching its own module off
    std::uint32_t module_changes_ = 0;
    std::uint32_t published_ = 0;  ///< of the sections that came in addition, the serial number of the last one
    /// How many sections were created with one that came in addition, by its serial number.
    std::unordered_map<std::uint32_t, std::shared_ptr<std::uint32_t>> created_;
};

}  // namespace kq_pdt
