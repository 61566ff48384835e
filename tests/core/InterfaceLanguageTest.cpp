#include "shell/FlowProgressText.h"
#include "shell/InterfaceLanguage.h"

#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

namespace fenrow {
namespace {

TEST(InterfaceLanguage, ResolvesFromThePreferenceThenTheSystem)
{
    EXPECT_EQ(InterfaceLanguage::resolve("fr", {"de-DE", "en-US"}), "fr");
    EXPECT_EQ(InterfaceLanguage::resolve("auto", {"pt-BR", "de-DE"}), "de");
    EXPECT_EQ(InterfaceLanguage::resolve("auto", {"pt_BR", "tr_TR"}), "tr");
    EXPECT_EQ(InterfaceLanguage::resolve("klingon", {"pt", "es-MX"}), "es");
    EXPECT_EQ(InterfaceLanguage::resolve("auto", {"pt", "ja-JP"}), "en");
    EXPECT_EQ(InterfaceLanguage::resolve(QString(), {}), "en");
    // Codes are exact: a region-qualified preference is not a code.
    EXPECT_EQ(InterfaceLanguage::resolve("de-AT", {"fr-CA"}), "fr");
}

TEST(InterfaceLanguage, OneProcessWideLanguageGovernsLookups)
{
    const FlowProgress progress{2, 1, 5};
    ASSERT_TRUE(InterfaceLanguage::apply("de"));
    EXPECT_EQ(InterfaceLanguage::current(), "de");
    EXPECT_EQ(qtTrId("sidebar.row.delete"), "Löschen");
    EXPECT_EQ(flowProgressText(progress), "2 von 5 erledigt · 1 in Arbeit");

    ASSERT_TRUE(InterfaceLanguage::apply("tr"));
    EXPECT_EQ(qtTrId("sidebar.row.delete"), "Sil");
    EXPECT_EQ(flowProgressText({3, 0, 3}), "3 görevin hepsi tamam");

    EXPECT_FALSE(InterfaceLanguage::apply("xx"));
    EXPECT_EQ(InterfaceLanguage::current(), "tr") << "a failed switch keeps the language in force";

    ASSERT_TRUE(InterfaceLanguage::apply("en"));
    EXPECT_EQ(flowProgressText({0, 0, 0}), "No tasks yet");
}

// id -> translation, for one language file.
QMap<QString, QString> readTranslations(const QString &path)
{
    QMap<QString, QString> messages;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        ADD_FAILURE() << "cannot read " << path.toStdString();
        return messages;
    }
    QXmlStreamReader xml(&file);
    QString id;
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        if (xml.name() == QLatin1StringView("message")) {
            id = xml.attributes().value(QLatin1StringView("id")).toString();
        } else if (xml.name() == QLatin1StringView("translation")) {
            const bool unfinished = xml.attributes().value(QLatin1StringView("type")) == QLatin1StringView("unfinished");
            const QString text = xml.readElementText();
            messages.insert(id, unfinished ? QString() : text);
        }
    }
    EXPECT_FALSE(xml.hasError()) << path.toStdString() << ": " << xml.errorString().toStdString();
    return messages;
}

TEST(InterfaceLanguage, EveryKeyUsedInCodeIsTranslatedInEveryLanguage)
{
    const QString root = QStringLiteral(FENROW_SOURCE_DIR);
    static const QRegularExpression lookup(QStringLiteral(R"re((?:qtTrId|QT_TRID_NOOP)\(\s*"([^"]+)")re"));
    QSet<QString> used;
    QDirIterator sources(root + QStringLiteral("/src"), {QStringLiteral("*.cpp"), QStringLiteral("*.h")},
                         QDir::Files, QDirIterator::Subdirectories);
    while (sources.hasNext()) {
        QFile file(sources.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(file.readAll());
        for (const QRegularExpressionMatch &match : lookup.globalMatch(text))
            used.insert(match.captured(1));
    }
    ASSERT_TRUE(used.contains(QStringLiteral("sidebar.flow.progress.empty"))) << "the scan finds lookups";

    for (const QString &code : InterfaceLanguage::supportedCodes()) {
        SCOPED_TRACE(code.toStdString());
        const auto messages = readTranslations(root + QStringLiteral("/translations/fenrow_%1.ts").arg(code));
        for (const QString &key : std::as_const(used)) {
            EXPECT_TRUE(messages.contains(key)) << "missing key " << key.toStdString();
            EXPECT_FALSE(messages.value(key).trimmed().isEmpty()) << "empty translation of " << key.toStdString();
        }
        // Placeholders must survive translation, or .arg() fills the wrong slot.
        static const QRegularExpression placeholder(QStringLiteral("%\\d"));
        const auto english = readTranslations(root + QStringLiteral("/translations/fenrow_en.ts"));
        for (auto it = messages.begin(); it != messages.end(); ++it) {
            QStringList expected, actual;
            for (const auto &m : placeholder.globalMatch(english.value(it.key())))
                expected << m.captured();
            for (const auto &m : placeholder.globalMatch(it.value()))
                actual << m.captured();
            expected.sort();
            actual.sort();
            EXPECT_EQ(actual, expected) << "placeholders of " << it.key().toStdString();
        }
    }
}

} // namespace
} // namespace fenrow
