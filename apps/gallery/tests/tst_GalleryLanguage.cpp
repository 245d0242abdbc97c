// The gallery's language: every text of its window goes through the translator, a change of
// language reaches the bar, the page list and the pages already made, and the Chinese file
// answers every text the window asks for.

#include "GalleryDelegates.h"
#include "GalleryI18n.h"
#include "GalleryPages.h"
#include "GalleryWindow.h"

#include <LxCore/CoreInit.h>
#include <LxCore/Environment.h>
#include <LxUIKit/LxGuiHelper.h>
#include <LxUIKit/LxUIKitLifecycle.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMutex>
#include <QPointer>
#include <QSet>
#include <QTranslator>
#include <QTreeWidget>
#include <QtTest>

#include <algorithm>

#include "LxTestSupport.h"

namespace {

const QString kOpen = QStringLiteral("⟦");
const QString kClose = QStringLiteral("⟧");

// Answers every text with the source between brackets, and remembers what it was asked.
class MarkingTranslator : public QTranslator {
public:
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* sourceText, const char* disambiguation = nullptr,
                      int n = -1) const override {
        if (!sourceText || !*sourceText)
            return QString();
        {
            QMutexLocker lock(&m_mutex);
            m_asked.insert({QString::fromUtf8(context), QString::fromUtf8(sourceText)});
        }
        return kOpen + QString::fromUtf8(sourceText) + kClose;
    }
    QSet<QPair<QString, QString>> Asked() const {
        QMutexLocker lock(&m_mutex);
        return m_asked;
    }

private:
    mutable QMutex m_mutex;
    mutable QSet<QPair<QString, QString>> m_asked;
};

// Texts shown in the window (visible widgets only) that did not come from the translator. Field
// contents, tree rows and the language names are data, not texts of the gallery.
QStringList UnmarkedTexts(QWidget* window) {
    QStringList out;
    auto check = [&out](const QObject* where, const QString& text) {
        if (text.contains(kOpen) || std::none_of(text.begin(), text.end(), [](QChar c) { return c.isLetter(); }))
            return;
        out << QStringLiteral("%1 \"%2\"").arg(QLatin1String(where->metaObject()->className()), text);
    };
    check(window, window->windowTitle());
    for (QWidget* w : window->findChildren<QWidget*>()) {
        if (!w->isVisible() || w->objectName() == QLatin1String("GalleryLanguage"))
            continue;
        check(w, w->toolTip());
        if (auto* label = qobject_cast<QLabel*>(w))
            check(w, label->text());
        else if (auto* button = qobject_cast<QAbstractButton*>(w))
            check(w, button->text());
        else if (auto* box = qobject_cast<QGroupBox*>(w))
            check(w, box->title());
        else if (auto* edit = qobject_cast<QLineEdit*>(w))
            check(w, edit->placeholderText());
        else if (auto* combo = qobject_cast<QComboBox*>(w))
            for (int i = 0; i < combo->count(); ++i)
                check(w, combo->itemText(i));
        else if (auto* list = qobject_cast<QListWidget*>(w))
            for (int i = 0; i < list->count(); ++i)
                check(w, list->item(i)->text());
        else if (auto* tree = qobject_cast<QTreeWidget*>(w))
            for (int i = 0; i < tree->columnCount(); ++i)
                check(w, tree->headerItem()->text(i));
    }
    return out;
}

void SelectLanguage(GalleryWindow& window, int langId) {
    auto* combo = window.findChild<QComboBox*>(QStringLiteral("GalleryLanguage"));
    QVERIFY(combo);
    combo->setCurrentIndex(combo->findData(langId));
    QCOMPARE(core::lang::GetLanguageId(), langId);
    QCoreApplication::processEvents();  // the posted QEvent::LanguageChange
}

QStringList PageListTexts(GalleryWindow& window) {
    auto* list = window.findChild<QListWidget*>(QStringLiteral("GalleryPageList"));
    QStringList out;
    for (int i = 0; list && i < list->count(); ++i)
        out << list->item(i)->text();
    return out;
}

QStringList SourceTitles() {
    QStringList out;
    for (const GalleryPage& page : AllGalleryPages())
        out << QString::fromLatin1(page.pszTitle);
    return out;
}

bool HasLabel(QWidget* page, const QString& text) {
    const QList<QLabel*> labels = page->findChildren<QLabel*>();
    return std::any_of(labels.begin(), labels.end(), [&](QLabel* l) { return l->text() == text; });
}

}  // namespace

class TestGalleryLanguage : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void everyTextGoesThroughTheTranslator();
    void languageSwitchRetranslatesTheOpenWindow();
    void cleanupTestCase();
};

void TestGalleryLanguage::initTestCase() {
    core::InitCore(gui::GetCoreInitParamVeryFirst());
    core::lang::SetLanguageId(core::lang::kLangZhCN);
    InstallGalleryTranslator();
    InstallGalleryDelegates();
    lxuikit::Init_LxUiKit_AfterProcessStart_MainThread();
}

void TestGalleryLanguage::cleanup() { core::lang::SetLanguageId(core::lang::kLangZhCN); }

void TestGalleryLanguage::everyTextGoesThroughTheTranslator() {
    GalleryWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    // Every page exists before the change, so each must be made again to follow it.
    for (const GalleryPage& page : AllGalleryPages())
        QVERIFY(window.OpenPage(page.strName));
    QVERIFY(window.OpenPage(QStringLiteral("archive")));

    MarkingTranslator marker;
    QCoreApplication::installTranslator(&marker);
    QCoreApplication::processEvents();
    QCOMPARE(window.CurrentPageName(), QStringLiteral("archive"));

    // The current page first (made again at once), then the others, each in its demonstration
    // state, which brings the status texts out.
    QStringList order{QStringLiteral("archive")};
    for (const GalleryPage& page : AllGalleryPages())
        if (page.strName != order.first())
            order << page.strName;
    for (const QString& name : order) {
        QVERIFY(window.OpenPage(name));
        window.RunDemo();
        QTest::qWait(400);
        const QStringList unmarked = UnmarkedTexts(&window);
        QVERIFY2(unmarked.isEmpty(), qPrintable(name + QStringLiteral(": ") + unmarked.join(QStringLiteral(", "))));
    }
    QCoreApplication::removeTranslator(&marker);

    // Each of those texts has its Chinese translation (the libraries' texts in their own file;
    // Qt's own contexts are Qt's business).
    QTranslator zh, zhLibrary;
    QVERIFY(zh.load(QStringLiteral(":/gallery/i18n/gallery_zh_CN.qm")));
    QVERIFY(zhLibrary.load(QStringLiteral(":/lxstdui/i18n/lxstdui_zh_CN.qm")));
    QStringList untranslated;
    for (const auto& asked : marker.Asked()) {
        if (asked.first.startsWith(QLatin1Char('Q')))
            continue;
        const QByteArray context = asked.first.toUtf8(), source = asked.second.toUtf8();
        if (zh.translate(context, source).isEmpty() && zhLibrary.translate(context, source).isEmpty())
            untranslated << asked.first + QStringLiteral("/") + asked.second;
    }
    QVERIFY2(untranslated.isEmpty(), qPrintable(untranslated.join(QStringLiteral(", "))));
}

void TestGalleryLanguage::languageSwitchRetranslatesTheOpenWindow() {
    GalleryWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(window.OpenPage(QStringLiteral("richtext")));
    const QStringList sources = SourceTitles();

    // Chinese from the start: no title of the list is left in English.
    const QStringList chinese = PageListTexts(window);
    QCOMPARE(chinese.size(), sources.size());
    for (int i = 0; i < sources.size(); ++i)
        QVERIFY2(chinese[i] != sources[i], qPrintable(sources[i]));
    QVERIFY(window.windowTitle() != QLatin1String("LxUIKit Gallery"));

    QPointer<QWidget> before = window.PageWidget(QStringLiteral("richtext"));
    SelectLanguage(window, core::lang::kLangEnUS);
    QCOMPARE(PageListTexts(window), sources);
    QCOMPARE(window.windowTitle(), QStringLiteral("LxUIKit Gallery"));
    QCOMPARE(window.CurrentPageName(), QStringLiteral("richtext"));
    QWidget* after = window.PageWidget(QStringLiteral("richtext"));
    QVERIFY(after && after != before && after->isVisible());
    QVERIFY(HasLabel(after, QStringLiteral("Rich text")));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!before);

    // And back: the translator is swapped again, not merely removed.
    SelectLanguage(window, core::lang::kLangZhCN);
    QCOMPARE(PageListTexts(window), chinese);
    QVERIFY(!HasLabel(window.PageWidget(QStringLiteral("richtext")), QStringLiteral("Rich text")));
}

void TestGalleryLanguage::cleanupTestCase() {
    lxuikit::Uninit_LxUiKit_OnProcessExit_MainThread();
    lxtest::ResetGlobals();  // the delegates and init block installed for the whole run
}

QTEST_MAIN(TestGalleryLanguage)
#include "tst_GalleryLanguage.moc"
