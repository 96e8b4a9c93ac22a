#include "desktop/peers/icons.h"

#include <QBuffer>
#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QImageReader>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QRegularExpression>
#include <utility>

#include "desktop/peers/colors.h"

namespace kq_desktop {

namespace {

/// What is neutral has this colour in the files.
constexpr const char *kNeutral = "#6b7a8c";

QColor NeutralColor(QIcon::Mode mode) {
    const QPalette palette = QGuiApplication::palette();
    const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
    if (mode == QIcon::Disabled) {
        return Dim(palette.color(QPalette::Active, QPalette::Window), text, 0.35);
    }
    return mode == QIcon::Selected ? palette.color(QPalette::Active, QPalette::HighlightedText) : text;
}

class CIconEngine final : public QIconEngine {
public:
    explicit CIconEngine(QString name) : name_(std::move(name)) {}

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State /*state*/) override {
        const QString neutral = NeutralColor(mode).name();
        const QString key =
            QStringLiteral("%1 %2 %3 %4 %5").arg(name_).arg(size.width()).arg(size.height()).arg(mode).arg(neutral);
        QPixmap drawn;
        if (!QPixmapCache::find(key, &drawn)) {
            drawn = Draw(size, mode, neutral);
            QPixmapCache::insert(key, drawn);
        }
        return drawn;
    }
    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override {
        painter->drawPixmap(rect, pixmap(rect.size() * painter->device()->devicePixelRatio(), mode, state));
    }
    QSize actualSize(const QSize &size, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        return QSize(1, 1).scaled(size, Qt::KeepAspectRatio);
    }
    QIconEngine *clone() const override { return new CIconEngine(name_); }

private:
    QPixmap Draw(const QSize &size, QIcon::Mode mode, const QString &neutral) const {
        QFile file(QStringLiteral(":/kqconf/%1.svg").arg(name_));
        if (!file.open(QFile::ReadOnly)) {
            return {};
        }
        QString svg = QString::fromUtf8(file.readAll());
        if (mode == QIcon::Disabled) {
            // White is a sign on a filled ground and stays to be seen.
            static const QRegularExpression colors(QStringLiteral("#(?!ffffff)[0-9a-f]{6}"));
            svg.replace(colors, neutral);
        } else {
            svg.replace(QLatin1String(kNeutral), neutral);
        }
        QByteArray bytes = svg.toUtf8();
        QBuffer buffer(&bytes);
        QImageReader reader(&buffer, "svg");
        reader.setScaledSize(reader.size().scaled(size, Qt::KeepAspectRatio));
        return QPixmap::fromImage(reader.read());
    }

    QString name_;
};

}  // namespace

QIcon LoadIcon(const QString &name) { return QIcon(new CIconEngine(name)); }

}  // namespace kq_desktop
