#include "configurator/place_finder.h"

#include <algorithm>
#include <functional>
#include <vector>

#include "configurator/node_names.h"

namespace kq_pdt {

namespace {

std::vector<CKeyDef *> KeysShowing(CSectionDef &section, std::string_view text) {
    std::vector<CKeyDef *> keys;
    for (const auto &key : section.Keys()) {
        if (ShownName(section, *key) == text) {
            keys.push_back(key.get());
        }
    }
    return keys;
}

bool BeginsWithConstant(CDefNode &definition, std::string_view name) {
    if (definition.Names() == nullptr) {
        return false;
    }
    const auto &items = definition.Names()->Items().Items();
    kq_base::CTextBuffer text;
    return !items.empty() && items.front()->Code() == TItemCode::kConst && items.front()->AppendText(text) &&
           text.View() == name;
}

template <class TNode>
bool IsDefinitionOfAny(const std::vector<TNode *> &instances, const TNode &definition) {
    return std::any_of(instances.begin(), instances.end(),
                       [&](const TNode *instance) { return instance->Definition() == &definition; });
}

/// The definitions that meet the first of the conditions that any of them meets.
template <class TNode, class TNodes>
std::vector<TNode *> BestMatches(const TNodes &definitions,
                                 const std::vector<std::function<bool(TNode &)>> &conditions) {
    std::vector<TNode *> matches;
    for (auto condition = conditions.begin(); condition != conditions.end() && matches.empty(); ++condition) {
        for (const auto &definition : definitions) {
            if ((*condition)(*definition)) {
                matches.push_back(definition.get());
            }
        }
    }
    return matches;
}

std::string Counted(std::size_t count, const std::string &noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

/// The match that the number of a name means. The two texts say that there is none, and how many there are.
template <class TNode>
TNode *Pick(const std::vector<TNode *> &matches, const TPlaceName &name, const char *none, const std::string &count,
            std::string &reason) {
    if (matches.empty()) {
        reason = none;
    } else if (name.number > matches.size()) {
        reason = count;
    } else if (name.number == 0 && matches.size() > 1) {
        reason = count + "; #1 to #" + std::to_string(matches.size()) + " after the name says which";
    } else {
        return matches[name.number == 0 ? 0 : name.number - 1];
    }
    return nullptr;
}

/// The name of a node among those that show the same.
template <class TNode>
TPlaceName NameAmong(const std::vector<TNode *> &showing, const TNode &node, const std::string &text) {
    const auto index = std::find(showing.begin(), showing.end(), &node) - showing.begin();
    return {text, showing.size() > 1 ? static_cast<std::uint32_t>(index) + 1 : 0};
}

}  // namespace

std::vector<CSectionDef *> CPlaceFinder::SectionsShowing(std::string_view text) const {
    std::vector<CSectionDef *> sections;
    for (const auto &section : data_.Instances().List()) {
        if (ShownName(*section) == text) {
            sections.push_back(section.get());
        }
    }
    return sections;
}

CSectionDef *CPlaceFinder::FindSection(const TPlaceName &name, std::string &reason) const {
    const auto matches = SectionsShowing(name.text);
    return Pick(matches, name, "no section shows this name",
                (matches.size() == 1 ? "there is " : "there are ") + Counted(matches.size(), "such section"), reason);
}

CKeyDef *CPlaceFinder::FindKey(CSectionDef &section, const TPlaceName &name, std::string &reason) {
    const auto matches = KeysShowing(section, name.text);
    return Pick(matches, name, "the section has no such key", "the key has " + Counted(matches.size(), "line"), reason);
}

CSectionDef *CPlaceFinder::FindAddableSection(const CSheetEdit &edit, const TPlaceName &name,
                                              std::string &reason) const {
    const auto showing = SectionsShowing(name.text);
    const auto matches = BestMatches<CSectionDef>(data_.Definitions(),
                                                  {
                                                      [&](auto &each) { return NewNodeText(each) == name.text; },
                                                      [&](auto &each) { return BeginsWithConstant(each, name.text); },
                                                      [&](auto &each) { return IsDefinitionOfAny(showing, each); },
                                                  });
    CSectionDef *definition = Pick(matches, name, "the template has no such section",
                                   "the template has " + Counted(matches.size(), "such section"), reason);
    if (definition == nullptr || edit.CanAddSection(*definition)) {
        return definition;
    }
    reason = definition->DependOn() != nullptr ? "the section comes with a value, and can't be added"
             : definition->Names() == nullptr  ? "a section without a name can't be added"
                                               : "the section is there, and there may be only one";
    return nullptr;
}

const CKeyDef *CPlaceFinder::FindAddableKey(CSectionDef &section, const TPlaceName &name, std::string &reason) {
    if (section.Definition() == nullptr) {
        reason = "the template has no such section";
        return nullptr;
    }
    const auto showing = KeysShowing(section, name.text);
    const CScopeGuard scope(&section);
    const auto matches = BestMatches<CKeyDef>(section.Definition()->Keys(),
                                              {
                                                  [&](auto &each) { return NewNodeText(each) == name.text; },
                                                  [&](auto &each) { return BeginsWithConstant(each, name.text); },
                                                  [&](auto &each) { return IsDefinitionOfAny(showing, each); },
                                                  [&](auto &each) { return each.Label() == name.text; },
                                              });
    const CKeyDef *definition = Pick(matches, name, "the template has no such key in this section",
                                     "the template has " + Counted(matches.size(), "such key"), reason);
    if (definition != nullptr && !definition->Has(nfMultiple)) {
        reason = "the key has its one line, and can't be added";
        return nullptr;
    }
    return definition;
}

std::string CPlaceFinder::PlaceOf(CSectionDef &section) const {
    const std::string text = ShownName(section);
    return WriteSectionName(NameAmong(SectionsShowing(text), section, text));
}

std::string CPlaceFinder::PlaceOf(CKeyDef &key) const {
    CSectionDef &section = *key.Section();
    const std::string text = ShownName(section, key);
    return PlaceOf(section) + "/" + WriteKeyName(NameAmong(KeysShowing(section, text), key, text));
}

}  // namespace kq_pdt
