#include "platform/base/code_page.h"
#include "scanner/string_tape_reader.h"
#include "tools/commands.h"
#include "tools/console/diagnostics.h"
#include "tools/console/files.h"
#include "tools/print/json_rows.h"

using par_scanner::CStringTapeReader;
using par_scanner::CTapeReader;
using par_scanner::TToken;

namespace {

/// Takes the tokens of a text, each with the reader's position after it.
class CTokenSink {
public:
    virtual ~CTokenSink() = default;
    virtual void Token(const TToken &token, std::uint32_t line, std::uint32_t index) = 0;
    virtual void Error(std::uint32_t error, std::uint32_t line, std::uint32_t index) = 0;
};

bool HasText(const TToken &token) {
    return token.kind == par_scanner::kIdentifier || token.kind == par_scanner::kString ||
           token.kind == par_scanner::kNumber;
}

class CJsonTokens : public CTokenSink {
public:
    explicit CJsonTokens(COutput &output) : rows_(output, " ") {}
    void Token(const TToken &token, std::uint32_t line, std::uint32_t index) override {
        rows_.Add({{"kind", token.kind},
                   {"text", HasText(token) ? TextJson(token.View()) : TJson(nullptr)},
                   {"line", line},
                   {"index", index}});
    }
    void Error(std::uint32_t error, std::uint32_t line, std::uint32_t index) override {
        rows_.Add({{"error", error}, {"line", line}, {"index", index}});
    }
    void End() { rows_.End(); }

private:
    CJsonRows rows_;
};

std::string_view ErrorText(std::uint32_t error) {
    switch (error) {
        case par_scanner::kLineEndInString:
            return "the string isn't closed on its line";
        case par_scanner::kStringTooLong:
            return "the string is longer than a token can be";
        case par_scanner::kMalformedExponent:
            return "the exponent of the number has no digits";
        default:
            return "this can't be read";
    }
}

std::string_view KindText(std::uint32_t kind) {
    switch (kind) {
        case par_scanner::kIdentifier:
            return "identifier";
        case par_scanner::kString:
            return "string";
        case par_scanner::kNumber:
            return "number";
        case par_scanner::kLineEnd:
            return "line end";
        case par_scanner::kEndOfInput:
            return "end of input";
        case par_scanner::kBlank:
            return "blank";
        default:
            return par_scanner::TokenKindText(kind);
    }
}

class CTokenLines : public CTokenSink {
public:
    CTokenLines(TConsole &console, const CSourceText &source) : console_(console), source_(source) {}
    void Token(const TToken &token, std::uint32_t line, std::uint32_t index) override {
        constexpr std::size_t kPositionWidth = 10;
        std::string position = std::to_string(line) + ':' + std::to_string(index);
        position.resize(std::max(position.size() + 1, kPositionWidth), ' ');
        console_.out.Write(position);
        console_.out.Write(KindText(token.kind));
        console_.out.Write(HasText(token) ? " " + kq_base::ToUtf8(token.View()) + "\n" : "\n");
    }
    void Error(std::uint32_t error, std::uint32_t line, std::uint32_t index) override {
        PrintDiagnostic(console_, source_, {.text = std::string(ErrorText(error)), .line = line, .column = index});
    }

private:
    TConsole &console_;
    const CSourceText &source_;
};

/// Reads all tokens; true if none failed. A failed read leaves the reader after what it couldn't read.
template <class Reader>
bool ReadTokens(Reader &reader, CTokenSink &sink) {
    bool good = true;
    for (;;) {
        TToken token;
        std::uint32_t error = 0;
        if (reader.ReadToken(error, token, false)) {
            sink.Token(token, reader.GetLine(), reader.GetLineIndex());
        } else if (error != 0) {
            sink.Error(error, reader.GetLine(), reader.GetLineIndex());
            good = false;
        } else {
            token.kind = par_scanner::kEndOfInput;
            sink.Token(token, reader.GetLine(), reader.GetLineIndex());
            return good;
        }
    }
}

bool ReadTokens(const std::string &text, bool raw, CTokenSink &sink) {
    if (raw) {
        CTapeReader reader;
        reader.InitBuffer(text.data(), static_cast<std::uint32_t>(text.size()));
        return ReadTokens(reader, sink);
    }
    CStringTapeReader reader;
    reader.InitDString(text);
    return ReadTokens(reader, sink);
}

}  // namespace

int RunTokens(const TArguments &arguments, TConsole &console) {
    CSourceText source;
    if (!ReadSource(console, arguments.par, source)) {
        return kFailed;
    }
    bool good = false;
    if (arguments.json) {
        CJsonTokens tokens(console.out);
        good = ReadTokens(source.Text(), arguments.raw, tokens);
        tokens.End();
        console.out.Write("\n");
    } else {
        CTokenLines tokens(console, source);
        good = ReadTokens(source.Text(), arguments.raw, tokens);
    }
    return good ? kDone : kInputErrors;
}
