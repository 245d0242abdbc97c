#pragma once
// Stock chips: text blocks (see LxTextBlockObjectHandlerBase.h) for stock tokens in editors.

#include <LxUIKit/LxTextObjectHandler/LxTextBlockObjectHandlerBase.h>

class CLxStockObjectHandler : public CLxTextBlockObjectHandlerBase {
    Q_OBJECT
public:
    explicit CLxStockObjectHandler(QObject* pParent = nullptr) : CLxTextBlockObjectHandlerBase(pParent) {}
};
