// Lazy load: two lists of 200 rows whose content is built by a creator. "On show" builds every
// row when the list is shown; "on paint" builds only the rows that are really painted, so rows
// scrolled out of view cost nothing until they scroll in.

#include "GalleryPages.h"

#include <LxCore/SafeFunction.h>
#include <LxStdUI/FontToken.h>
#include <LxUIKit/LxLazyLoadWidget.h>

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QScrollArea>
#include <QVBoxLayout>
#include <QVariant>

namespace {
const int kRows = 200;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(LazyLoadPage)
};

QWidget* MakeColumn(QWidget* page, core::pattern::CLazyLoadWidget::CreateMode mode, const QString& heading) {
    auto* column = new QWidget(page);
    auto* v = new QVBoxLayout(column);
    v->setContentsMargins(0, 0, 0, 0);
    auto* head = new QLabel(heading, column);
    head->setFont(LFontTokenLoader::font(QStringLiteral("title2")));
    auto* counter = new QLabel(column);
    counter->setObjectName(mode == core::pattern::CLazyLoadWidget::CreateOnShow ? QStringLiteral("LazyCounterShow")
                                                                                : QStringLiteral("LazyCounterPaint"));
    counter->setProperty("role", QStringLiteral("hint"));
    auto* scroll = new QScrollArea(column);
    scroll->setWidgetResizable(true);
    auto* list = new QWidget(scroll);
    auto* rows = new QVBoxLayout(list);
    rows->setSpacing(6);
    auto created = std::make_shared<int>(0);
    QPointer<QLabel> pCounter = counter;
    auto update = [pCounter, created] {
        if (pCounter)
            pCounter->setText(Texts::tr("content created for %1 of %2 rows").arg(*created).arg(kRows));
    };
    update();
    for (int i = 0; i < kRows; ++i) {
        auto* lazy = new core::pattern::CLazyLoadWidget(
            list, core::CSafeFunction<QWidget*()>(column, [i, created, update]() -> QWidget* {
                ++*created;
                update();
                auto* card = new QLabel(Texts::tr("Row %1 — built lazily").arg(i + 1));
                card->setMinimumHeight(36);
                card->setStyleSheet(
                    QStringLiteral("padding:8px; border-radius:4px; background:rgba(100,160,255,0.18);"));
                return card;
            }));
        lazy->SetCreateMode(mode);
        lazy->setMinimumHeight(36);
        rows->addWidget(lazy);
    }
    scroll->setWidget(list);
    v->addWidget(head);
    v->addWidget(counter);
    v->addWidget(scroll, 1);
    return column;
}
}  // namespace

QWidget* CreateLazyLoadPage(QWidget* parent) {
    auto* page = new QWidget(parent);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(24, 20, 24, 20);
    auto* title = new QLabel(Texts::tr("Lazy load"), page);
    title->setFont(LFontTokenLoader::font(QStringLiteral("BigTitle2")));
    auto* hint = new QLabel(Texts::tr("Each list holds %1 containers. Scroll the right list and watch its counter: "
                                      "content is made only when a row is painted.")
                                .arg(kRows),
                            page);
    hint->setProperty("role", QStringLiteral("hint"));
    hint->setWordWrap(true);
    auto* columns = new QHBoxLayout;
    columns->setSpacing(20);
    columns->addWidget(MakeColumn(page, core::pattern::CLazyLoadWidget::CreateOnShow, Texts::tr("Create on show")));
    columns->addWidget(MakeColumn(page, core::pattern::CLazyLoadWidget::CreateOnPaint, Texts::tr("Create on paint")));
    layout->addWidget(title);
    layout->addWidget(hint);
    layout->addLayout(columns, 1);
    return page;
}
