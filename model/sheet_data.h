#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "driver/channels/channel_range_table.h"
#include "model/assignments.h"
#include "model/compile_result.h"
#include "model/dll_item.h"
#include "model/instances.h"
#include "model/model_listener.h"
#include "model/reference_index.h"
#include "model/report_window.h"
#include "model/section_def.h"

class CTextOut;
class CTextView;

namespace kq_pdt {

struct TEditState;

/// The root of a session's model: the compiled template, the instances read from a parameter file, the table of
/// channels and the variables. It works without a window; reports and commands are dropped then.
///
/// Compiling templates and what modules bring along are in sheet_data_templates.cpp, the operations on channels in
/// sheet_data_channels.cpp, the rest in sheet_data.cpp.
class CParSheetData final : public CExpressionContext {
public:
    /// How deep the templates of modules may load each other.
    static constexpr std::uint32_t kMaxModuleDepth = 8;
    /// How many templates one module may bring along, with all that they load.
    static constexpr std::uint32_t kMaxModuleLoads = 100;

    CParSheetData();
    ~CParSheetData() override;
    CParSheetData(const CParSheetData &) = delete;
    CParSheetData &operator=(const CParSheetData &) = delete;

    /// Attaches the window that takes messages and commands, or none.
    void SetWindow(CReportWindow *window);
    CReportWindow *Window() const { return window_; }
    /// Attaches who follows edits and rows, or nobody; not owned.
    void SetListener(CModelListener *listener) { listener_ = listener; }
    /// A row of a table was inserted or removed; table 0 is one that nobody knows yet.
    void RowsChanged(std::uint32_t table, std::size_t row, bool inserted);

    /// Compiles the template at a path into a list of sections that share this model's variables, words and channels.
    /// On failure what was read before the error stays.
    bool CompileTemplate(std::string_view path, CSectionList &sections, TCompileResult &result);
    /// The same for a template's text.
    bool CompileTemplateText(std::string_view text, CSectionList &sections, TCompileResult &result);
    /// Compiles a template into the model.
    bool LoadTemplate(std::string_view path, TCompileResult &result);
    bool LoadTemplateText(std::string_view text, TCompileResult &result);

    /// Reads a parameter file into instances; the old ones go first. Whatever there is to say goes to the window.
    void ReadPar(std::string_view text);
    /// Writes all instances out.
    void WriteParText(CTextOut &out);

    /// A module was chosen in a `dll` value: what the previous one brought along goes, and the module's own template is
    /// loaded. An empty name only releases. A template that fails shows a box.
    void LoadModuleTemplate(TLoadedModule &loaded, std::string_view name);

    /// The modules that export all of the procedures. While a parameter file is read, they are listed once.
    CSharedNames ModulesWith(const CNameList &procedures);

    /// An edit under way; all that is changed until it ends can be taken back. Edits don't nest.
    void BeginEdit();
    /// Settles and keeps what the edit did, unless it was refused. Otherwise takes all of it back, tells the user once,
    /// and gives false; bad_channel says then whether that was the box.
    bool EndEdit(bool &bad_channel);
    /// The edit under way, or none.
    TEditState *Edit() const { return edit_.get(); }
    /// Refuses the edit under way; with bad_channel a box tells so in the end, otherwise the status line.
    void Refuse(bool bad_channel = false);
    /// The editor of a cell that is open, or none.
    std::unique_ptr<TCellEditor> &OpenEditor() { return open_editor_; }
    /// A node was released; an editor open in it ends.
    void NodeReleased(const CDefNode &node);

    /// The table of channels through the sheet data, which keeps the window informed.
    bool ChangeChannelParameter(std::uint32_t key, std::uint32_t keyword, const TParValue &old_value,
                                const TParValue &new_value);
    void RemoveChannelRange(std::uint32_t first);
    /// False, with nothing appended, if there is no number left.
    bool AppendChannelRange(std::uint32_t type, std::uint32_t direction, std::uint32_t &first, std::uint32_t &last,
                            bool defined);
    bool AddUnnamedChannelRange(std::uint32_t first, std::uint32_t last, std::uint32_t type, std::uint32_t direction);
    /// Lays the block of a node that gets its numbers in an edit. False if it doesn't fit, which the user is told.
    bool DefineChannelRange(std::uint32_t first, std::uint32_t last, std::uint32_t type, std::uint32_t direction);
    /// The same without a word to the user.
    bool DefineFittingRange(std::uint32_t first, std::uint32_t last, std::uint32_t type, std::uint32_t direction);
    /// Reserves count channels after all others, of no type and direction; gives the first number.
    std::uint32_t NewChannelRange(bool defined, std::uint32_t count);
    void SelectChannelRange(std::uint32_t first);

    /// Tells the user that a channel number won't do.
    void ShowBadChannel();
    /// An error without a position.
    void ReportError(std::string_view text);
    void Post(TWindowCommand command, std::uint32_t parameter = 0);

    /// Takes back an edit whose steps EditTaken gave; the channels are the caller's to roll back.
    void TakeBackEdit(CJournal::TSteps &steps);

    /// The next id for a table of the sheet. Ids count up from 2 and are used once in the model's life.
    std::uint32_t AllocTableId() { return next_table_id_++; }
    /// The instance that a table shows: a section, or a key with its section. Both null for an unknown id.
    void FindByTable(std::uint32_t id, CSectionDef *&section, CKeyDef *&key);
    /// A node's table has another id now; 0 is none.
    void TableChanged(CDefNode &node, std::uint32_t old_id, std::uint32_t id);
    CSectionDef &AppendDefinition(std::unique_ptr<CSectionDef> section);
    void ClearInstances();
    /// Forgets template and instances.
    void ClearData();
    /// Releases everything.
    void Done();

    CVarScope &RootScope() { return root_scope_; }
    CChannelRangeTable &Ranges() { return ranges_; }
    const CSectionList &Definitions() const { return definitions_; }
    /// The names of the definitions, each with its section.
    const CNameIndex &DefinitionNames();
    CAssignments &Assignments() { return assignments_; }
    CInstances &Instances() { return instances_; }
    const CInstances &Instances() const { return instances_; }
    const CNameList &KeywordWords() const { return keyword_words_; }
    /// True if some section is `multiple` and depends on nothing.
    bool CanAddMultiple() const;
    /// Who refers to which variable.
    const CReferenceIndex &References();
    /// True while a parameter file is read, from its first section to the last one that it lacks.
    bool IsReadingPar() const { return reading_par_; }
    bool NoChannels() const { return no_channels_; }

    void ReadVariable(std::string_view name, TParValue &value) override;
    CVariable *FindVariable(std::string_view name) override;
    std::uint32_t NewChannels(std::uint32_t count) override;

private:
    void ReleaseDefinition(const CSectionDef &definition);
    void AddDefinitionName(CSectionDef &definition);
    void ReleaseModule(TLoadedModule &loaded);
    void TellKeywordsChanged();
    void TakeModuleSections(CSectionList &sections, TLoadedModule &loaded);
    void TellChannelsChanged();
    void ShowTemplateBox(std::string_view path, const TCompileResult &result);

    CVarScope root_scope_;
    CChannelRangeTable ranges_;
    CSectionList definitions_;
    CReferenceIndex references_;
    bool references_outdated_ = true;
    CNameIndex definition_names_;
    bool definition_names_outdated_ = true;
    std::uint32_t next_definition_ = 0;  ///< the serial number of the next definition in definition_names_
    bool no_channels_ = false;
    CInstances instances_{*this};
    CAssignments assignments_{*this};
    std::uint32_t next_table_id_ = 2;
    CReportWindow *window_ = nullptr;
    CModelListener *listener_ = nullptr;
    CNameList keyword_words_;
    std::unordered_map<std::uint32_t, CDefNode *> tables_;  ///< instances and their keys by the id of their table
    std::uint32_t module_depth_ = 0;
    std::uint32_t module_loads_ = 0;
    bool reading_par_ = false;
    CModuleLists module_lists_;  ///< of the reading under way
    std::unique_ptr<TEditState> edit_;
    std::unique_ptr<TCellEditor> open_editor_;
    bool module_limit_shown_ = false;  ///< one box tells of templates that load each other
};

}  // namespace kq_pdt
