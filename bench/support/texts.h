#pragma once

/// Texts for the benchmarks, made by rule, so that every run and every peer works on the same bytes.

#include <cstddef>
#include <string>

namespace kq_bench {

/// How large a template is: 1,000 sections with 10 keys of 3 parameters each hold 41,000 items, the constant names of
/// sections and keys among them.
struct TTemplateSize {
    int sections = 1000;
    int keys = 10;
    int pars = 3;
};

/// Parameters and the constant names of sections and keys.
inline int ItemCount(const TTemplateSize &size) { return size.sections * (1 + size.keys * (1 + size.pars)); }

inline std::string SectionName(int section) { return "Section" + std::to_string(section); }
inline std::string KeyName(int key) { return "Key" + std::to_string(key); }
inline std::string ParLabel(int section, int key, int par) {
    return "Parameter " + std::to_string(section) + "." + std::to_string(key) + "." + std::to_string(par);
}
inline int ParRangeTo(int section, int par) { return 1000 + section + par; }
inline int ParDefault(int section, int key, int par) { return (section * 7 + key * 3 + par) % 1000; }

/// The template in our own language: each parameter a number with label, range and default.
inline std::string PdtText(const TTemplateSize &size) {
    std::string text = "ver_from = 50020;\n";
    for (int section = 0; section < size.sections; ++section) {
        text += "def_section\n  name = '" + SectionName(section) + "';\n";
        for (int key = 0; key < size.keys; ++key) {
            text += "  def_key\n    name = '" + KeyName(key) + "';\n";
            for (int par = 0; par < size.pars; ++par) {
                text += "    par = number { label = '" + ParLabel(section, key, par) +
                        "'; range_from = 1; range_to = " + std::to_string(ParRangeTo(section, par)) +
                        "; default = " + std::to_string(ParDefault(section, key, par)) + " };\n";
            }
            text += "  end_key\n";
        }
        text += "end_section\n";
    }
    return text;
}

/// The same content as JSON, indented as a person would keep it.
inline std::string TemplateAsJson(const TTemplateSize &size) {
    std::string text = "{\n\"ver_from\": 50020,\n\"sections\": [";
    for (int section = 0; section < size.sections; ++section) {
        text += section == 0 ? "\n" : ",\n";
        text += "  {\"name\": \"" + SectionName(section) + "\", \"keys\": [";
        for (int key = 0; key < size.keys; ++key) {
            text += key == 0 ? "\n" : ",\n";
            text += "    {\"name\": \"" + KeyName(key) + "\", \"pars\": [";
            for (int par = 0; par < size.pars; ++par) {
                text += par == 0 ? "\n" : ",\n";
                text += R"(      {"kind": "number", "label": ")" + ParLabel(section, key, par) +
                        R"(", "range_from": 1, "range_to": )" + std::to_string(ParRangeTo(section, par)) +
                        R"(, "default": )" + std::to_string(ParDefault(section, key, par)) + "}";
            }
            text += "]}";
        }
        text += "]}";
    }
    text += "]\n}\n";
    return text;
}

/// The same content in the syntax of libconfig.
inline std::string TemplateAsLibconfig(const TTemplateSize &size) {
    std::string text = "ver_from = 50020;\nsections = (";
    for (int section = 0; section < size.sections; ++section) {
        text += section == 0 ? "\n" : ",\n";
        text += "  { name = \"" + SectionName(section) + "\"; keys = (";
        for (int key = 0; key < size.keys; ++key) {
            text += key == 0 ? "\n" : ",\n";
            text += "    { name = \"" + KeyName(key) + "\"; pars = (";
            for (int par = 0; par < size.pars; ++par) {
                text += par == 0 ? "\n" : ",\n";
                text += "      { kind = \"number\"; label = \"" + ParLabel(section, key, par) +
                        "\"; range_from = 1; range_to = " + std::to_string(ParRangeTo(section, par)) +
                        "; default = " + std::to_string(ParDefault(section, key, par)) + "; }";
            }
            text += "); }";
        }
        text += "); }";
    }
    text += ");\n";
    return text;
}

/// A parameter file of at least the given size as plants have them: sections of 20 keys, each with a number, two words
/// and, in every fourth line, a text in quotes; a blank line and a comment a section. It is read by readers of plain
/// INI files too.
inline std::string ParTextOfSize(std::size_t bytes) {
    constexpr int kKeysInSection = 20;
    std::string text;
    text.reserve(bytes + 2048);
    for (int section = 0; text.size() < bytes; ++section) {
        text += "[Station" + std::to_string(section) + "]\n";
        for (int key = 0; key < kKeysInSection; ++key) {
            text += "  Register" + std::to_string(key) + " = " + std::to_string((section * 31 + key * 17) % 65536) +
                    ", HOLDING, RW";
            if (key % 4 == 0) {
                text += ", 'Boiler " + std::to_string(key) + "'";
            }
            text += '\n';
        }
        text += '\n';
    }
    return text;
}

constexpr int kKeysInLargeSection = 100;  ///< of the parameter file that ParTextOfKeys makes

/// A parameter file with the given number of keys of 4 values, 100 keys a section.
inline std::string ParTextOfKeys(int keys) {
    std::string text;
    for (int key = 0; key < keys; ++key) {
        if (key % kKeysInLargeSection == 0) {
            text += "[Unit" + std::to_string(key / kKeysInLargeSection) + "]\n";
        }
        text += "Point" + std::to_string(key % kKeysInLargeSection) + " = " + std::to_string(key % 60000) + ", Pump" +
                std::to_string(key % 97) + ", " + (key % 2 == 0 ? "ON" : "OFF") + ", " + std::to_string(key % 1000) +
                "\n";
    }
    return text;
}

/// The template of ParTextOfKeys: one section that may occur any number of times, with one key that may.
inline std::string PdtTextOfKeys() {
    return "ver_from = 50020;\n"
           "def_section\n"
           "  name = 'Unit' + number { range_from = 0; range_to = 1000000 };\n"
           "  multiple;\n"
           "  def_key\n"
           "    name = 'Point' + number { range_from = 0; range_to = 1000000 };\n"
           "    multiple;\n"
           "    par = number { label = 'Register'; range_from = 0; range_to = 65535 };\n"
           "    par = string { label = 'Name' };\n"
           "    par = options { option = 'ON'; option = 'OFF' };\n"
           "    par = number { label = 'Period'; range_from = 0; range_to = 1000 };\n"
           "  end_key\n"
           "end_section\n";
}

}  // namespace kq_bench
