#pragma once

/// The configuration library without a window: compile a template, read a parameter file and a driver map file against
/// it, look at what came out, and write both files again.
///
/// All texts are bytes in code page 1250 (platform/base/code_page.h turns them into UTF-8 and back). No file is read or
/// written, except that a `dll` value reads the template of the module that it selects. Lines and columns count from 1.
/// What is wrong in a text is reported, never thrown.
///
///     kq_cfg::CConfiguration configuration(options);
///     configuration.Translate(template_text, par_text, dmf_text);
///     if (configuration.Report().Good() && configuration.Set("Line1/Timing:2", "3").ok) {
///         const std::string edited = configuration.ParText();
///     }
///
/// A configuration belongs to one thread, and one thread uses one configuration at a time.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/base/export.h"
#include "template/language/languages.h"

namespace kq_cfg {

using kq_pdt::kLanguages;

/// The host that a configuration runs under. Without language and modules there is no host: no language tag of a
/// template matches, and `dll` values list nothing.
struct TOptions {
    std::optional<std::uint32_t> language;  ///< index in kLanguages; any other matches no tag
    std::optional<std::string> modules;     ///< directory of the modules that `dll` values list
};

/// The result of compiling a template. Line and position (the column in that line) are those just after the last token
/// read, also without an error.
struct TTemplateResult {
    bool ok = false;
    std::string message;  ///< empty without an error, and for the few errors that have no text
    std::uint32_t line = 0;
    std::uint32_t position = 0;
};

enum class TSeverity { kWarning, kError };

/// One row of the message list.
struct TMessage {
    TSeverity severity = TSeverity::kError;
    std::string text;
    std::optional<std::uint32_t> line;    ///< in the parameter file; none if the message is about no line
    std::optional<std::uint32_t> column;  ///< only with a line
};

/// A message box that the work would have shown to a user.
struct TMessageBox {
    std::string title;
    std::vector<std::string> lines;  ///< always three
    bool stop = false;               ///< it has the stop icon
};

/// What a translation or a compile reported; messages and boxes are in the order in which they came.
struct TReport {
    TTemplateResult result;
    std::vector<TMessage> messages;
    std::uint32_t errors = 0;
    std::uint32_t warnings = 0;
    std::vector<TMessageBox> boxes;
    /// The line of the driver map file from which on the table of channels takes no more, none if it took all. The
    /// channels from there on are kept aside and come back when the file is written.
    std::optional<std::uint32_t> dmf_end;

    /// True if the template compiled and neither an error nor a box with the stop icon was reported.
    KQ_API bool Good() const;
};

/// One range of the table of channels.
struct TChannel {
    std::uint32_t first = 0;
    std::uint32_t last = 0;
    std::optional<std::string> type;       ///< the type word; none if undefined
    std::optional<std::string> direction;  ///< the direction word; none if undefined
    bool defined = false;         ///< by the template or the parameter file; otherwise it is only in the driver map
    bool type_free = false;       ///< the definition leaves the type open
    bool direction_free = false;  ///< the definition leaves the direction open
    std::string name;             ///< may be empty
};

enum class TValueKind { kNone, kText, kNumber, kBool, kNewChannel, kUndefined };

/// A value of a variable or of an expression.
struct TValue {
    TValueKind kind = TValueKind::kNone;
    std::string text;          ///< of kText
    std::uint32_t number = 0;  ///< of kNumber
    bool truth = false;        ///< of kBool
};

using TVariables = std::vector<std::pair<std::string, TValue>>;  ///< ascending by name, in byte order

enum class TExprKind { kNumber, kText, kBool, kUndefined, kVariable, kNewChannel, kOperator };

/// A node of an expression. Parentheses have no node: the tree shows how the operands group.
struct TExpr {
    TExprKind kind = TExprKind::kUndefined;
    std::uint32_t number = 0;
    bool truth = false;
    std::string text;             ///< a text; the name of a variable; an operator as written, "not", or "neg" for -x
    std::vector<TExpr> operands;  ///< the argument of new_channel; one or two operands of an operator, left first
};

/// A row that turns a text into a type or direction word.
struct TMapRow {
    std::string text;
    std::string word;
};

/// A row of a channel group: the type or direction word that applies while the condition holds.
struct TConditionRow {
    std::optional<std::string> word;  ///< none if the template's word is neither: that counts as undefined
    TExpr condition;
};

struct TOptionEntry {
    std::string text;
    std::string label;
};

enum class TItemKind { kConst, kNumber, kString, kOptions, kDll, kVariable, kGroup };

/// A value item or a channel group of a template. The fields after the blank line belong to the kinds named.
struct TItem {
    TItemKind kind = TItemKind::kConst;
    std::string none_text;
    std::string comment;
    std::vector<std::string> roles;  ///< ch_type, ch_from, ch_to, ch_number, ch_direction, ch_count, read_all
    bool optional = false;
    bool undefined = false;
    bool case_sensitive = true;
    std::optional<std::string> id;
    std::optional<TExpr> enable_if;
    std::vector<TMapRow> type_map;
    std::vector<TMapRow> direction_map;
    std::optional<std::string> type_variable;
    std::optional<std::string> direction_variable;
    std::optional<std::uint32_t> fixed_count;

    std::string text;                       ///< const: the text; string: the value; variable: the variable's name
    std::uint32_t number = 0;               ///< number: the value
    std::uint32_t range_from = 0;           ///< number
    std::uint32_t range_to = 0;             ///< number
    std::string label;                      ///< number, string, options, dll
    std::string bubble;                     ///< number, string, options, dll
    std::optional<TExpr> default_value;     ///< number, string
    std::vector<TOptionEntry> entries;      ///< options
    std::optional<std::uint32_t> selected;  ///< options: index from 0
    std::vector<std::string> procedures;    ///< dll
    std::optional<TExpr> from;              ///< group
    std::optional<TExpr> to;                ///< group
    std::optional<std::vector<TConditionRow>> type_rows;       ///< group
    std::optional<std::vector<TConditionRow>> direction_rows;  ///< group
};

struct TPar {
    std::vector<TItem> items;
    bool write_if_all = false;
    std::optional<std::string> line_variable;
};

/// What sections and keys have in common.
struct TNode {
    std::vector<std::string> flags;  ///< required, multiple, module, channels, unrecognised
    std::optional<std::vector<TItem>> name;
    bool write_if_all = false;
    std::optional<std::string> line_variable;
    TVariables variables;
    std::vector<TItem> groups;
};

struct TKey : TNode {
    std::string label;
    std::vector<TPar> pars;
};

struct TSection : TNode {
    std::optional<std::string> depend_on;
    std::vector<TKey> keys;
};

/// What a template declares, as far as it was read.
struct TTemplate {
    TReport report;
    bool no_channels = false;
    bool can_add_multiple = false;
    std::vector<std::string> keywords;
    std::vector<TChannel> channels;
    TVariables variables;
    std::vector<TSection> sections;
};

/// The result of an edit.
struct TEditOutcome {
    bool ok = false;
    std::string message;  ///< why it was refused; empty if ok
    std::string added;    ///< the place of what Add added, if ok
};

/// The result of evaluating an expression.
struct TEvaluation {
    bool ok = false;
    std::string message;  ///< of the compiler, if not ok
    TValue value;         ///< only if ok
    TExpr tree;           ///< only if ok
};

/// One item of a match, with the text that it prints.
struct TMatchItem {
    TItemKind kind = TItemKind::kConst;
    std::optional<std::string> text;  ///< none if the item prints nothing
};

/// The result of matching a text against a value list.
struct TMatch {
    bool ok = false;      ///< the value list compiled
    std::string message;  ///< of the compiler, if not ok
    bool matched = false;
    std::vector<TMatchItem> items;  ///< in the order of the match
};

/// One session with a template, a parameter file and a driver map file.
class KQ_API CConfiguration {
public:
    explicit CConfiguration(const TOptions &options);
    ~CConfiguration();
    CConfiguration(const CConfiguration &) = delete;
    CConfiguration &operator=(const CConfiguration &) = delete;

    /// From text to model: clears everything, reads the driver map file into the table of channels, compiles the
    /// template and, if it compiled, reads the parameter file. Report() says what happened.
    void Translate(std::string_view template_text, std::string_view par_text, std::string_view dmf_text);
    /// The same for the repair of a driver map file: none is read, so that afterwards the table holds what the template
    /// and the parameter file define, and nothing else.
    void TranslateForRepair(std::string_view template_text, std::string_view par_text);
    /// What the last translation or compile reported; an empty report before the first one.
    const TReport &Report() const;

    /// The edits below change what the last translation read, as a person does in the sheet: limits, conditions and
    /// channels are judged, and everything that depends on a value follows. A refused edit changes nothing. Report()
    /// gets the messages and boxes of the edits, too.
    ///
    /// A place is made of the names that the parameter file shows. SECTION:M is a cell of a section's name,
    /// SECTION/KEY:M a value of a line, SECTION/KEY@M a cell of a line's name; :M may be left out if M is 1. #N after a
    /// name is the N-th of those that show the same name, and has to be given if there are several. M and N count from
    /// 1. A backslash makes the next character a part of the name.

    /// Enters a value into a cell. An entry of a list is given by the text that the parameter file holds, or by its
    /// label; the text for a missing value, or an empty one, takes an optional value away.
    TEditOutcome Set(std::string_view place, std::string_view value);
    /// Adds the section SECTION, or the line SECTION/KEY to a section, at the end. What is added is named by what a new
    /// one shows, or the constant at the beginning of its name, or the name of one that exists, or the key's label.
    TEditOutcome Add(std::string_view place);
    /// Removes a section or a line.
    TEditOutcome Remove(std::string_view place);

    /// The model written out as a parameter file. Empty before a translation. After errors it holds what was read
    /// without them, so check Report() before you save it.
    std::string ParText() const;
    /// The table of channels written out as a driver map file.
    std::string DmfText() const;
    /// The table of channels, ascending.
    std::vector<TChannel> Channels() const;

    /// Compiles a template alone, with a driver map file's text in the table of channels, and gives what it declares;
    /// after an error, what it declared before that.
    TTemplate CompileTemplate(std::string_view template_text, std::string_view dmf_text);

private:
    struct TState;
    std::unique_ptr<TState> state_;
};

/// The same in a configuration of its own.
KQ_API TTemplate DescribeTemplate(const TOptions &options, std::string_view template_text, std::string_view dmf_text);

/// Evaluates one expression of the template language. Each variable is declared in the root scope first, with its value
/// (kUndefined declares it without one). Text after the expression is an error.
KQ_API TEvaluation EvaluateExpression(std::string_view expression, const TVariables &variables);

/// An expression as the template language writes it, with the parentheses that it needs and those that make clear how
/// operands group.
KQ_API std::string ExpressionText(const TExpr &expression);
/// A text as a literal of the template language: in single quotes, each quote in it doubled.
KQ_API std::string LiteralText(std::string_view text);

/// Matches a text against a value list of the template language, written as after `name =`. Text after the list is an
/// error.
KQ_API TMatch MatchValueList(std::string_view value_list, std::string_view text);

}  // namespace kq_cfg
