#include "desktop/peers/text_highlighter.h"

#include "desktop/peers/text.h"
#include "platform/view/text_view.h"

namespace kq_desktop {

namespace {

QColor ColorOf(std::uint32_t number) {
    constexpr std::uint32_t kNone = 0xFFFFFFFF;
    if (number == kNone) {
        return {};
    }
    return QColor(static_cast<int>(number & 0xFFU), static_cast<int>(number >> 8U & 0xFFU),
                  static_cast<int>(number >> 16U & 0xFFU));
}

/// A colour that was chosen for a white page, made light enough for a dark one.
QColor Readable(const QColor &color, bool dark) {
    if (!dark || color.lightness() > 150) {
        return color;
    }
    QColor light;
    light.setHsl(color.hslHue(), std::min(color.hslSaturation(), 190), 190);
    return light;
}

class CLine {
public:
    CLine(const QString &text, bool dark) : text_(text), dark_(dark) {}

    bool AtEnd() const { return at_ >= text_.size(); }
    QChar Next() const { return text_[at_]; }
    qsizetype At() const { return at_; }
    bool Sees(QStringView word) const { return QStringView(text_).mid(at_).startsWith(word); }
    void Skip(qsizetype count) { at_ += count; }

    void Paint(qsizetype from, qsizetype to, const QColor &color, bool bold = false, bool italic = false) {
        QTextLayout::FormatRange range;
        range.start = static_cast<int>(from);
        range.length = static_cast<int>(to - from);
        range.format.setForeground(Readable(color, dark_));
        if (bold) {
            range.format.setFontWeight(QFont::Bold);
        }
        range.format.setFontItalic(italic);
        formats_.append(range);
    }
    QList<QTextLayout::FormatRange> Take() { return std::move(formats_); }

private:
    const QString &text_;
    bool dark_;
    qsizetype at_ = 0;
    QList<QTextLayout::FormatRange> formats_;
};

const QColor kSection(0x1F, 0x5F, 0xA8);
const QColor kKey(0x6A, 0x3E, 0x9E);
const QColor kQuoted(0x1B, 0x7F, 0x3B);
const QColor kWord(0x00, 0x6D, 0x77);
const QColor kComment(0x76, 0x76, 0x76);

bool IsWordPart(QChar character) { return character.isLetterOrNumber() || character == QLatin1Char('_'); }

}  // namespace

void CTextHighlighter::Read(const CTextView &view) {
    words_.clear();
    for (const CTextView::TColoredId &word : view.ColoredIds()) {
        words_[ToQt(word.name.View())] = ColorOf(word.color);
    }
    number_ = ColorOf(view.number_color.value_or(CTextView::kNumberColor));
}

QList<QTextLayout::FormatRange> CTextHighlighter::Formats(const QString &text, const QPalette &palette) const {
    CLine line(text, palette.color(QPalette::Base).lightness() < 128);
    const qsizetype equals = text.indexOf(QLatin1Char('='));
    const QString trimmed = text.trimmed();
    if (trimmed.startsWith(QLatin1Char('['))) {
        const qsizetype begin = text.indexOf(QLatin1Char('['));
        const qsizetype end = text.indexOf(QLatin1Char(']'));
        if (end > begin) {
            line.Paint(begin, end + 1, kSection, true);
            line.Skip(end + 1);
        }
    } else if (equals > 0 && !trimmed.startsWith(QStringLiteral("(*"))) {
        line.Paint(0, equals, kKey);
        line.Skip(equals);
    }
    while (!line.AtEnd()) {
        const qsizetype from = line.At();
        if (line.Sees(u"(*")) {
            const qsizetype end = text.indexOf(QStringLiteral("*)"), from + 2);
            line.Skip((end < 0 ? text.size() : end + 2) - from);
            line.Paint(from, line.At(), kComment, false, true);
        } else if (line.Next() == QLatin1Char('\'')) {
            const qsizetype end = text.indexOf(QLatin1Char('\''), from + 1);
            line.Skip((end < 0 ? text.size() : end + 1) - from);
            line.Paint(from, line.At(), kQuoted);
        } else if (IsWordPart(line.Next())) {
            while (!line.AtEnd() && IsWordPart(line.Next())) {
                line.Skip(1);
            }
            const QString word = text.mid(from, line.At() - from);
            const auto known = words_.find(word);
            if (known != words_.end()) {
                line.Paint(from, line.At(), known->second.isValid() ? known->second : kWord, true);
            } else if (word.front().isDigit()) {
                line.Paint(from, line.At(), number_);
            }
        } else {
            line.Skip(1);
        }
    }
    return line.Take();
}

}  // namespace kq_desktop
