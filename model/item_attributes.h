#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "model/option_index.h"
#include "platform/base/bounded_text.h"
#include "platform/base/pooled.h"
#include "template/language/expression.h"

namespace kq_pdt {

class CVarRefItem;

/// The part that an item plays in the definition of channels and in its value list, as a set of bits.
enum TRole : std::uint16_t {
    roleChType = 1U << 1U,
    roleChFrom = 1U << 2U,
    roleChTo = 1U << 3U,
    roleChNumber = 1U << 4U,
    roleChDirection = 1U << 5U,
    roleChCount = 1U << 6U,
    roleReadAll = 1U << 7U,
};

/// A row of `ch_type` or `ch_direction`: the keyword code that a value stands for.
struct CValueMapEntry {
    kq_base::TText text;
    std::uint32_t code = 0;
};

using TValueMap = std::vector<CValueMapEntry>;

/// Turns a value into a keyword code. A single row of empty text holds for every value; otherwise the first row with
/// exactly the value's text does, a number being its decimal digits. False without such a row.
bool MapValue(const TValueMap &map, const TParValue &value, std::uint32_t &code);

/// The condition of `enable_if`.
class CEnableIf {
public:
    explicit CEnableIf(std::unique_ptr<CExpression> expression) : expression_(std::move(expression)) {}

    /// True only if the expression gives the truth value true; what isn't known yet doesn't hold.
    bool Holds() const;
    /// True if the expression refers to the variable.
    bool DependsOn(const CVariable *variable) const { return expression_->ReferencesVariable(variable); }
    const CExpression &Expression() const { return *expression_; }

private:
    std::unique_ptr<CExpression> expression_;
};

/// What few items have: how they define channels.
struct TChannelAttributes {
    TChannelAttributes();
    ~TChannelAttributes();

    TValueMap type_map;
    TValueMap direction_map;
    std::optional<CValueMapEntry> pending;  ///< a row whose word hasn't come yet, only while a template is compiled
    std::uint32_t fixed_count = 0;
    std::uint32_t fixed_keyword = 0;  ///< the code of `ch_count` once fixed_count holds
    std::unique_ptr<CVarRefItem> type_variable;
    std::unique_ptr<CVarRefItem> direction_variable;
};

/// `default`: mostly a literal, which needs no expression.
class CDefaultValue {
public:
    CDefaultValue() = default;
    explicit CDefaultValue(TParValue literal) : literal_(std::move(literal)) {}
    explicit CDefaultValue(std::unique_ptr<CExpression> expression) : expression_(std::move(expression)) {}

    bool IsGiven() const { return expression_ != nullptr || literal_.kind != TParKind::pvNone; }
    void Evaluate(TParValue &result) const {
        if (expression_) {
            expression_->Evaluate(result);
        } else {
            result = literal_;
        }
    }
    /// None for a literal.
    const CExpression *Expression() const { return expression_.get(); }
    /// pvNone for an expression.
    const TParValue &Literal() const { return literal_; }

private:
    TParValue literal_;
    std::unique_ptr<CExpression> expression_;
};

/// Texts that few items have.
struct TRareTexts {
    kq_base::TText comment;
    std::optional<kq_base::TText> none_text;  ///< `nedef`
};

/// What an `options` item offers.
struct TOptions {
    std::vector<COptionEntry> entries;
    kq_base::TText pending_label;                 ///< the label of the next entry, only while a template is compiled
    mutable std::unique_ptr<COptionIndex> index;  ///< made when a text is first looked for, after compilation
};

/// All that a template says about an item and that never changes afterwards. An item and its clones share it.
struct TItemAttributes : kq_base::CPooled {
    std::string_view Comment() const { return rare_texts ? rare_texts->comment.View() : std::string_view(); }
    /// What the sheet shows for a value that is undefined.
    const kq_base::TText &NoneText() const;
    TRareTexts &EditRareTexts();
    /// The entries of an `options` item, none for other items.
    const std::vector<COptionEntry> &Entries() const;

    std::uint32_t owners = 0;  ///< the items that share it: see CSharedAttributes
    std::uint32_t range_from = 0;
    std::uint32_t range_to = 0;
    std::uint16_t roles = 0;
    bool case_sensitive = true;
    kq_base::TText label;
    kq_base::TText bubble;
    std::unique_ptr<TRareTexts> rare_texts;
    std::unique_ptr<CEnableIf> enable_if;
    CDefaultValue default_value;
    std::unique_ptr<TChannelAttributes> channel;
    std::unique_ptr<TOptions> options;
};

/// The attributes as items share them, all of which belong to one model, so that one thread at a time counts them.
class CSharedAttributes {
public:
    CSharedAttributes() = default;
    explicit CSharedAttributes(TItemAttributes *attributes) : attributes_(attributes) { Count(); }
    CSharedAttributes(const CSharedAttributes &other) : attributes_(other.attributes_) { Count(); }
    CSharedAttributes &operator=(const CSharedAttributes &other) {
        CSharedAttributes copy(other);
        std::swap(attributes_, copy.attributes_);
        return *this;
    }
    ~CSharedAttributes() {
        if (attributes_ != nullptr && --attributes_->owners == 0) {
            delete attributes_;
        }
    }

    TItemAttributes *Get() const { return attributes_; }

private:
    void Count() {
        if (attributes_ != nullptr) {
            ++attributes_->owners;
        }
    }

    TItemAttributes *attributes_ = nullptr;
};

}  // namespace kq_pdt
