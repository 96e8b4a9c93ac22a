#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/base/export.h"
#include "scanner/par_section.h"
#include "scanner/tape_reader.h"

/// The surface of a parameter file: its sections, their keys and the keys' values, straight from the text and without a
/// model.
///
///     [Port]                     a header: blanks, `[`, a name, `]`; the rest of the line is ignored
///     Baud = 9600, 8 EVEN        a key, its text, and three values that are cut at `,` and blanks
///     Log                        a key without values
///
/// Text before the first header belongs to no section. A line that begins with `[` ends a section's keys even if it is
/// no header. A key line without `=` at the very end of the text, without a line end, is lost. Comments and strings are
/// those of the token reader: what they hold separates nothing. All texts are delivered as the file has them,
/// quotes and inner comments included, without the blanks around them; a text of more than 255 characters is cut to
/// 254, and a NUL or a carriage return in mid-line ends it.
///
/// There is no syntax error. A failure of the token reader (a line end in a string, 12EF, a comment that isn't closed)
/// counts as the end of the text; scanner/unread_text.h finds where that is.
namespace par_scanner {

struct TScannedText;

/// Reads a parameter file in order: Init; GetFirstSection, GetNextSection; in a section GetFirstKey, GetNextKey; at a
/// key GetKeyPars, or GetFirstPar and then GetNextPar until it gives false. A section's keys are read when the section
/// first becomes current, values whenever they are asked for.
///
/// A text is given in two ways: into a buffer with its highest valid index, or as a view that stays valid until Done.
/// Names are cut at the high index. The buffer of any other text must hold 256 characters, whatever the high index
/// says.
///
/// A copy shares the text, the sections and their keys with its original, the cursor in a section's keys included; its
/// tape and its current section are its own.
class KQ_API CParScanner {
public:
    static constexpr std::uint32_t kNoSection = 0xFFFFFFFF;

    CParScanner();

    /// Forgets the text and all that was found in it: no section is current.
    virtual void Done();
    /// The size of the text in bytes. A subclass supplies the text through this and the next.
    virtual std::uint32_t GetDataSize();
    /// Fills a buffer of that size with the text; false if there is none.
    virtual bool ReadBlockData(TStr0_ *buffer);

    /// Reads the text and finds the sections. False, and all stays as it was, without a text or memory for it. Of the
    /// source nothing depends.
    bool Init(std::uint32_t source);

    /// Goes to the first or next section and gives its name; false, and no section is current, if there is none.
    bool GetFirstSection(std::uint32_t high, char *name);
    bool GetNextSection(std::uint32_t high, char *name);
    bool FirstSection();
    bool NextSection();
    /// The name of the current section, empty without one.
    std::string_view SectionName() const;
    /// Reads the keys of a section unless they are read. FirstSection and NextSection do so by themselves.
    void LoadSectionData(CSection *section);
    /// The current section, null if there is none.
    CSection *ActSection() const { return section_; }
    /// The index of the current section from 0, or kNoSection.
    std::uint32_t GetActSectionHandle() const { return section_handle_; }
    /// Returns to a section by its index. kNoSection does nothing; an index after the last leaves no current section.
    void SetActSectionHandle(std::uint32_t handle);
    /// The line of the current section's header from 1, 0 without one.
    std::uint32_t GetSectionLine() const;

    /// Goes to the first or next key of the current section and gives its text; false if there is none.
    bool GetFirstKey(std::uint32_t high, char *name);
    bool GetNextKey(std::uint32_t high, char *name);
    bool FirstKey();
    bool NextKey();
    /// The text of the current key, empty without one.
    std::string_view KeyName() const;
    /// The line of the current key from 1, 0 without one.
    std::uint32_t GetKeyLine() const;

    /// All that follows the `=` of the current key, as one text. False, and an empty text, without key or `=`.
    bool GetKeyPars(std::uint32_t high, char *text);
    bool KeyPars(std::string_view &text);
    /// The first value of the current key; false without key or `=`.
    bool GetFirstPar(std::uint32_t high, char *value);
    bool FirstValue(std::string_view &value);
    /// The next value, and the token kind before it: kComma or kBlank. False at the line's end.
    bool GetNextPar(std::uint32_t high, char *value, std::uint32_t &separator);
    bool NextValue(std::string_view &value, std::uint32_t &separator);

    /// The column of the tape, from 1, up to which the last call has read.
    std::uint32_t GetActPos() const { return tape_.GetLineIndex(); }
    /// Reads a token from the tape, as CTapeReader::ReadToken.
    bool ReadToken(std::uint32_t &error, TToken &token, bool peek);
    /// Reads tokens up to and including one of two kinds; true if that was the first one.
    bool TapeFind(std::uint32_t kind1, std::uint32_t kind2);
    /// Reads tokens up to and including one of two kinds and gives what precedes it. True if the last token read
    /// has the kind good. end says whether the text ended instead.
    bool AppendStrUntilToken(std::uint32_t high, char *text, std::uint32_t stop1, std::uint32_t stop2,
                             std::uint32_t good, bool &end);
    /// The same with a set of kinds, bit 1 << kind each; gives the kind that stopped it, kLineEnd where the text ended.
    std::uint32_t AppendStrUntilTokenEx(std::uint32_t high, char *text, std::uint64_t stops, bool &end);

    /// Kept for older callers; these do nothing.
    void GoToBeginOfSource() {}
    void GoToBeginOfSection(std::uint32_t /*high*/, const char * /*name*/) {}
    void PushPosition() {}
    void PopPosition() {}

private:
    bool Enter(std::size_t index);
    const CKey *CurrentKey() const { return section_ != nullptr ? section_->CurrentKey() : nullptr; }
    /// False if the key's line has to be read token by token now, as all while the tape carries something over.
    bool IsRegular(const CKey &key) const { return key.regular && !tape_.CarriesOver(); }
    /// Moves the tape past the `=` of a key; without one past its line, and gives false.
    bool GoPastEqual(const CKey &key);
    /// Moves the tape to the next line from a place in a regular one.
    void GoToNextLine(const char *at);
    std::string_view CutValue();
    std::string_view CutValueByTokens();

    std::uint32_t source_ = 0;
    std::shared_ptr<TScannedText> text_;  ///< never absent
    CSection *section_ = nullptr;         ///< the current one
    CTapeReader tape_;
    bool last_value_ = false;             ///< the last value delivered ended the line
    std::uint32_t separator_ = kNoToken;  ///< what ended it
    bool in_regular_line_ = false;        ///< the last value left the tape in such a line, and it is there still
    std::uint32_t section_handle_ = kNoSection;
};

/// Starts the module, any number of times. The scanner has nothing to start.
KQ_API void Init_();

}  // namespace par_scanner
