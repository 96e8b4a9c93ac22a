#pragma once

#include <memory>
#include <string>
#include <vector>

#include "model/sheet_edit.h"
#include "tests/model/edit_generator.h"
#include "tests/support/model_session.h"
#include "tests/support/temporary_directory.h"

/// One thing that a person does. Nodes go by the names that the parameter file shows, and by their number, from 1,
/// among nodes of the same name; what is added goes by the name that its definition shows.
struct TEdit {
    enum class TKind { kCell, kChannelCell, kAddSection, kAddKey, kRemoveSection, kRemoveKey };

    TKind kind = TKind::kCell;
    std::string section;
    std::uint32_t section_number = 1;
    std::string key;  ///< empty for the section itself
    std::uint32_t key_number = 1;
    std::uint32_t cell = 0;  ///< as CSheetEdit counts; in the table of channels the column
    std::uint32_t row = 0;   ///< in the table of channels, from 0
    std::string value;       ///< '=' and an entry to select, '"' and a text to type, or "!": leave without taking
};

/// Where edits start, and the edits.
struct TCase {
    TTemplate pdt;
    std::string par;
    std::string dmf;
    std::vector<TEdit> edits;
};

struct TFailure {
    std::string cause;  ///< what goes wrong, alike for failures of the same kind; empty for none
    std::string details;
};

/// A directory with the modules of a template, and a host that lists it.
class CModuleDirectory {
public:
    ~CModuleDirectory() { kq_pdt::SetHostCallback(nullptr); }

    /// Makes the modules and the host those of the session that works next.
    void Hold(const std::vector<TModule> &modules);

private:
    CTemporaryDirectory directory_;
    CDirectoryHost host_{"."};
    std::vector<TModule> modules_;
};

/// A model that is edited, with the law watched at each step: after an edit that was taken, what is written reads into
/// the same model, and after one that was refused everything is as before.
class CLawRun {
public:
    /// The model starts from the texts of a case.
    CLawRun(CModuleDirectory &directory, const TCase &start);

    /// False if the texts don't read; such a case says nothing.
    bool IsReadable() const { return readable_; }
    /// Chooses an edit of what the model holds, but for its value.
    TEdit Choose(CDice &dice);
    /// Carries an edit out, with dice after choosing its value. False once the law is broken.
    bool Step(TEdit &edit, CDice *dice);
    const TFailure &Failure() const { return failure_; }
    bool WasTaken() const { return taken_; }
    CModelSession &Model() { return model_; }
    /// The texts that the model writes.
    const std::string &Par() const { return par_; }
    const std::string &Dmf() const { return dmf_; }

private:
    bool Carry(TEdit &edit, CDice *dice);
    bool EditCell(kq_pdt::CSectionDef &section, kq_pdt::CKeyDef *key, TEdit &edit, CDice *dice);
    bool SetChannelCell(TEdit &edit, CDice *dice);
    std::string ChooseValue(const kq_pdt::TCellEditor &editor, CDice &dice);
    void Write();
    void CheckTaken(const std::string &what);
    void CheckRefused(const std::string &before);
    void Fail(const std::string &cause, const std::string &details);

    CModuleDirectory &directory_;
    TTemplate pdt_;
    CModelSession model_;
    kq_pdt::CSheetEdit edit_{model_.SheetData()};
    bool readable_ = false;
    bool found_ = false;  ///< what the edit is about is there
    bool taken_ = false;
    std::string par_;
    std::string dmf_;
    std::string state_;  ///< everything that a refused edit has to leave
    TFailure failure_;
};

/// A driver map as others may leave it: with further channels, with blocks in pieces or missing.
std::string ChangeDriverMap(const std::string &dmf, CDice &dice);

/// The first failure of a case from its start.
TFailure RunCase(CModuleDirectory &directory, const TCase &start);

/// The smallest case found that fails for the same cause.
TCase Shrink(CModuleDirectory &directory, const TCase &start, const std::string &cause);

/// A script for a shell that makes the case's files and edits them with kqcfg.
std::string Script(const TCase &start);
