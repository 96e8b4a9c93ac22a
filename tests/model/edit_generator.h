#pragma once

#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <vector>

/// How probable each feature of a template is, in percent.
using TKnobs = std::map<std::string, std::uint32_t, std::less<>>;

/// The usual knobs, changed by a text such as "modules=0,groups=90".
TKnobs MakeKnobs(std::string_view changes);

/// The same numbers from the same seed on every platform.
class CDice {
public:
    explicit CDice(std::uint32_t seed) : random_(seed) {}

    std::uint32_t Below(std::size_t limit) { return static_cast<std::uint32_t>(random_() % limit); }
    bool OneIn(std::uint32_t count) { return Below(count) == 0; }
    template <class T>
    const T &Pick(const std::vector<T> &all) {
        return all[Below(all.size())];
    }

private:
    std::mt19937 random_;
};

/// A module to be listed by the `dll` items that ask for its procedure, with its own template.
struct TModule {
    std::string name;
    std::string procedure;
    std::string pdt;
};

/// A template with one statement a line, and the modules that it may load.
struct TTemplate {
    std::string pdt;
    std::vector<TModule> modules;
};

/// A template at random in which everything that can be entered can be written and read again: names begin with
/// constants of their own, values that may be missing are recognisable, and what a condition or default depends on is
/// published before it, by the first section, which is always there, or by the same section or key.
TTemplate MakeTemplate(std::uint32_t seed, const TKnobs &knobs);
