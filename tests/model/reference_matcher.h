#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <string_view>
#include <vector>

#include "model/item_list.h"

/// The matcher in its plainest form: every way of cutting the text is a candidate of its own with clones of all items
/// that it passed, and candidates are stepped one after the other. Slow, and the measure for CMatcher.
class CReferenceMatcher {
public:
    explicit CReferenceMatcher(std::string_view text) : text_(text) {}

    void AddPattern(const kq_pdt::CItemSeq &items) { patterns_.push_back(&items); }
    bool Run() {
        for (std::size_t pattern = 0; pattern < patterns_.size(); ++pattern) {
            auto state = std::make_unique<TState>();
            state->pattern = pattern;
            if (!patterns_[pattern]->IsEmpty() && Start(*state, nullptr, 0, 0)) {
                queue_.push_back(std::move(state));
            }
        }
        while (!queue_.empty()) {
            for (auto state = queue_.begin(); state != queue_.end();) {
                std::unique_ptr<TState> fork;
                bool failed = false;
                if (Step(**state, fork, failed)) {
                    winner_ = (*state)->pattern;
                    results_ = std::move((*state)->results);
                    return true;
                }
                if (fork) {
                    queue_.push_back(std::move(fork));
                }
                state = failed ? queue_.erase(state) : std::next(state);
            }
        }
        return false;
    }
    std::size_t Winner() const { return winner_; }
    const kq_pdt::CItemSeq &Results() const { return *results_; }

private:
    struct TState {
        std::size_t pattern = 0;
        std::size_t item = 0;
        std::uint32_t position = 0;
        bool complete = false;
        std::unique_ptr<kq_pdt::CItemSeq> results;
        kq_pdt::CItem *clone = nullptr;
    };

    bool Start(TState &state, const kq_pdt::CItemSeq *so_far, std::uint32_t position, std::size_t item) {
        const auto &items = patterns_[state.pattern]->Items();
        state.results = std::make_unique<kq_pdt::CItemSeq>();
        if (so_far != nullptr) {
            so_far->CloneInto(*state.results);
        }
        kq_pdt::TMatchStep step;
        for (; !items[item]->Match(text_, position, step); step = {}) {
            if (!step.may_be_empty || ++item == items.size()) {
                return false;
            }
        }
        state.item = item;
        state.position = step.position;
        state.complete = step.complete;
        state.results->Append(items[item]->Clone());
        state.clone = state.results->Items().back().get();
        if (step.may_be_empty) {
            if (std::unique_ptr<TState> fork = Fork(state, position)) {
                queue_.push_back(std::move(fork));
            }
        }
        state.clone->ParseValue(text_, position, step.position);
        return true;
    }

    std::unique_ptr<TState> Fork(TState &state, std::uint32_t position) {
        auto fork = std::make_unique<TState>();
        fork->pattern = state.pattern;
        const bool starts = state.item + 1 < patterns_[state.pattern]->Items().size() &&
                            Start(*fork, state.results.get(), position, state.item + 1);
        return starts ? std::move(fork) : nullptr;
    }

    bool Step(TState &state, std::unique_ptr<TState> &fork, bool &failed) {
        const auto &items = patterns_[state.pattern]->Items();
        if (state.position == text_.size()) {
            bool rest_may_be_empty = true;
            for (std::size_t item = state.item + 1; item < items.size(); ++item) {
                kq_pdt::TMatchStep step;
                items[item]->Match(text_, 0, step);
                rest_may_be_empty = rest_may_be_empty && step.may_be_empty;
            }
            if (rest_may_be_empty) {
                return true;
            }
        }
        fork = Fork(state, state.position);
        kq_pdt::TMatchStep step;
        failed = state.complete || !items[state.item]->Match(text_, state.position, step);
        if (!failed) {
            const std::uint32_t first = state.position;
            state.position = step.position;
            state.complete = step.complete;
            state.clone->ParseValue(text_, first, step.position);
        }
        return false;
    }

    std::string_view text_;
    std::vector<const kq_pdt::CItemSeq *> patterns_;
    std::list<std::unique_ptr<TState>> queue_;
    std::size_t winner_ = 0;
    std::unique_ptr<kq_pdt::CItemSeq> results_;
};
