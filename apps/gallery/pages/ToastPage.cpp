// Toasts: the three states, short (no slide) and long (slides up from the bottom edge).

#include "GalleryPages.h"

#include <LxCore/SafeQtConnect.h>
#include <LxCore/Scheme.h>
#include <LxStdUI/FontToken.h>
#include <LxUIKit/LxGuiHelper.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(ToastPage)
};
struct Kind {
    const char* name;  // English, also part of the buttons' object names
    TriBool state;
};
const Kind kKinds[] = {{QT_TRANSLATE_NOOP("ToastPage", "Success"), TriBool::True},
                       {QT_TRANSLATE_NOOP("ToastPage", "Failure"), TriBool::False},
                       {QT_TRANSLATE_NOOP("ToastPage", "Neutral"), TriBool::Neutral}};
const int kShortMs = 800;
const int kLongMs = 3000;
}  // namespace

QWidget* CreateToastPage(QWidget* parent) {
    auto* page = new QWidget(parent);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(24, 20, 24, 20);
    layout->setSpacing(12);
    auto* title = new QLabel(Texts::tr("Toasts"), page);
    title->setFont(LFontTokenLoader::font(QStringLiteral("BigTitle2")));
    auto* hint = new QLabel(Texts::tr("A toast shows a short message over everything and deletes itself. Up to one "
                                      "second it appears below the middle of the screen; longer toasts slide up "
                                      "from the bottom edge."),
                            page);
    hint->setProperty("role", QStringLiteral("hint"));
    hint->setWordWrap(true);
    auto* text = new QLineEdit(Texts::tr("Order placed: 100 shares"), page);
    text->setObjectName(QStringLiteral("ToastText"));
    text->setPlaceholderText(Texts::tr("Toast text"));
    layout->addWidget(title);
    layout->addWidget(hint);
    layout->addWidget(text);

    auto* history = new QListWidget(page);
    history->setObjectName(QStringLiteral("ToastHistory"));
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(10);
    int row = 0;
    for (const Kind& kind : kKinds) {
        const QString kindName = Texts::tr(kind.name);
        grid->addWidget(new QLabel(kindName, page), row, 0);
        int col = 1;
        for (int ms : {kShortMs, kLongMs}) {
            auto* btn = new QPushButton(Texts::tr("%1 ms").arg(ms), page);
            btn->setObjectName(QStringLiteral("Toast_%1_%2").arg(QLatin1String(kind.name)).arg(ms));
            const TriBool state = kind.state;
            LX_SAFE_CONNECT_IN("Gallery", btn, &QPushButton::clicked, page, [=] {
                gui::ShowSimpleToast(text->text(), state, ms);
                history->insertItem(0, Texts::tr("%1  %2, %3 ms: %4")
                                           .arg(QTime::currentTime().toString(QStringLiteral("hh:mm:ss")), kindName)
                                           .arg(ms)
                                           .arg(text->text()));
            });
            grid->addWidget(btn, row, col++);
        }
        ++row;
    }
    grid->setColumnStretch(3, 1);
    layout->addLayout(grid);

    // A link the application cannot open: the kit's load-failure dialog, in the current language.
    auto* scheme =
        new QPushButton(Texts::tr("Open %1 (no handler)").arg(QStringLiteral("lxdemo://quote?id=700")), page);
    scheme->setObjectName(QStringLiteral("ToastUnknownScheme"));
    LX_SAFE_CONNECT_IN("Gallery", scheme, &QPushButton::clicked, page,
                       [page] { core::scheme::OpenUrl(QStringLiteral("lxdemo://quote?id=700"), page); });
    auto* schemeRow = new QHBoxLayout;
    schemeRow->addWidget(scheme);
    schemeRow->addStretch(1);
    layout->addLayout(schemeRow);
    layout->addWidget(new QLabel(Texts::tr("Shown"), page));
    layout->addWidget(history, 1);
    return page;
}

void DemoToastPage(QWidget* page) {
    // A long success toast: by the time of a screenshot it has slid into place.
    if (auto* btn = page->findChild<QPushButton*>(QStringLiteral("Toast_Success_%1").arg(kLongMs)))
        btn->click();
}
