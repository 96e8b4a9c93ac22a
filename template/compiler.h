#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "model/compile_result.h"
#include "model/dll_item.h"
#include "model/section_def.h"
#include "template/language/expression_builder.h"
#include "template/language/keyword_reader.h"

namespace kq_pdt {

class CChannelRangeTable;

/// Turns the text of one template into definitions: recursive descent with one token of look-ahead. What a statement
/// creates is created as the statement is read, and the first error ends everything; what was made before it stays.
///
/// Where the text can't be cut into tokens it counts as ended, which at the top level is no error.
class CPdtCompiler : public CKeywordReader {
public:
    /// The newest version of the language that this compiler knows, for `ver_from`.
    static constexpr std::uint32_t kLanguageVersion = 50040;

    /// The text must live until the compile is over. New sections go to the list.
    void Init(CParSheetData &sheet_data, std::string_view text, CVarScope &root_scope, CSectionList &sections);
    /// Compiles. ranges takes the channels of the top level; without it nothing happens and the result is false.
    /// keywords takes the words to be coloured; without it every `keywords` statement fails. False on failure.
    bool Compile(CChannelRangeTable *ranges, CNameList *keywords, TCompileResult &result);

    /// Parts of the language on their own: a value list as after `name =`, and an expression. Each must be the whole
    /// text; what follows it is an error. False on failure.
    bool CompileValueList(std::unique_ptr<CItemList> &list, TCompileResult &result);
    bool CompileExpression(std::unique_ptr<CExpression> &expression, TCompileResult &result);

private:
    // Top level, sections and keys: compiler.cpp
    void ParseTopLevel();
    void ParseKeywords();
    void ParseVersion();
    void ParseFixedChannels();
    bool ParseChannelNumber(std::uint32_t &number);
    bool ParseOneOf(bool (*is_one)(std::uint32_t), std::initializer_list<std::uint32_t> expected, std::uint32_t &code);
    void ParseSection();
    bool ParseSectionStatement();
    void ParseKey();
    bool ParseKeyStatement();
    void ParseName(CDefNode &node);
    void ParseFlag(CDefNode &node, TNodeFlag flag);
    void ParseDependOn();
    void ParseGroup(CDefNode &node);
    void Finish(TCompileResult &result);

    // Value lists, texts and `var`: compiler_values.cpp
    void ParseValueList();
    void ParseListEnd();
    void ParseValueItem();
    std::unique_ptr<CItem> ParseItemWord();
    std::unique_ptr<CItem> ParseReference();
    void ParseText();
    void ParseTextItem();
    void ParseVar(CDefNode &node);
    void ParseVarAttributes();
    void ParseInitValue();

    // Attribute blocks: compiler_attributes.cpp
    void ParseAttributes();
    bool ParseAttribute();
    void ParseBareAttribute(std::uint32_t keyword);
    void ParseRange(std::uint32_t keyword);
    void ParseId();
    void ParseOption();
    void ParseTextAttribute(std::uint32_t keyword);
    void ParseDefault();
    void ParseGroupRow(std::uint32_t keyword);
    void ParseChannelMap(std::uint32_t keyword);
    void ParseChannelBound(std::uint32_t keyword);
    void ParseChannelCount();
    void ParseEnableIf();
    void SetAttribute(std::uint32_t keyword, std::uint32_t form, std::string_view text);

    // Expressions: compiler_expressions.cpp
    std::unique_ptr<CExpression> ParseWholeExpression();
    std::optional<TParValue> ParseLoneLiteral();
    std::unique_ptr<CExpression> ParseTree();
    void ParseExpression();
    void ParseAnd();
    void ParseNot();
    void ParseEquality();
    void ParseRelation();
    void ParseSum();
    void ParseProduct();
    void ParseFactor();
    void ParseParentheses();
    void ParseFunction();
    void ParseMinus();
    void ParseVariable();
    std::optional<TParValue> Literal() const;
    bool TakeOperator(TExprKind kind);
    bool Accept(CExpressionBuilder::TResult result);
    void Attach() { Accept(builder_.Attach()); }

    void EnterScopes();
    void LeaveScopes();
    /// A reference to the look-ahead identifier from inside the present section and key; fails if it isn't declared.
    std::unique_ptr<CVarRefItem> ReferenceHere();

    CNameList *keywords_ = nullptr;
    CParSheetData *sheet_data_ = nullptr;
    CVarScope *scope_ = nullptr;
    CSectionList *sections_ = nullptr;
    CChannelRangeTable *ranges_ = nullptr;
    bool no_channels_ = false;
    std::vector<std::uint32_t> fixed_channels_;
    CSectionDef *section_ = nullptr;  ///< kept until the next one begins
    CKeyDef *key_ = nullptr;
    CItemList *item_list_ = nullptr;
    CItem *item_ = nullptr;
    CChannelsGroupItem *group_ = nullptr;  ///< the last one so far: bounds in later blocks reach it
    CVariable *variable_ = nullptr;
    kq_base::CTextBuffer text_;
    CExpressionBuilder builder_;
    std::optional<TParValue> first_literal_;  ///< read already, before the operator that is the look-ahead now
};

}  // namespace kq_pdt
