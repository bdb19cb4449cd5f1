// A library that is loaded into a running process and brings the frame and the catalogs along.

#include "lcd/translate/lcdfwtranslatemanager.h"
#include "lcd/widget/factorytestframe.h"
#include "veltor/trans/translate.h"

extern "C" Q_DECL_EXPORT QWidget *makeLatePage()
{
    auto *frame = new LCD::Widget::FactoryTestFrame(nullptr);
    frame->setTitleIcon(QStringLiteral("FactoryIconLabel"), QStringLiteral("NetTest"));
    frame->setTitle(veltor::trans::translate(LCDFWTranslateManager::instance()->translator(),
                                             QStringLiteral("LCD::HomeWidgets"), QStringLiteral("Global"),
                                             QStringLiteral("FCNet")));
    return frame;
}
