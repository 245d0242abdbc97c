#pragma once
// Shared by the inspector suites: a shown window holding a panel with a button in it, and a point
// of an item view's viewport in the view's own coordinates.

#include <QAbstractItemView>
#include <QPushButton>
#include <QtTest>

struct SpyDesk {
    QWidget top;
    QWidget* panel = new QWidget(&top);
    QPushButton* button = new QPushButton(QStringLiteral("Buy"), panel);

    SpyDesk() {
        top.setObjectName(QStringLiteral("desk"));
        top.resize(300, 200);
        panel->setObjectName(QStringLiteral("panel"));
        panel->setGeometry(10, 10, 200, 100);
        button->setGeometry(10, 10, 80, 30);
        top.show();
    }
    bool exposed() { return QTest::qWaitForWindowExposed(&top); }
    QPoint ButtonPoint() const { return button->mapTo(&top, QPoint(20, 10)); }
};

inline QPoint InView(const QAbstractItemView* view, const QPoint& viewportPoint) {
    return view->viewport()->mapTo(view, viewportPoint);
}
