#include <lcd/factorymode/ikeyboardevent.h>
#include <lcd/translate/lcdfwtranslatemanager.h>
#include <lcd/widget/factorytestframe.h>
#include <mirel/api.h>
#include <veltor/trans/translate.h>

#include <QtWidgets/QApplication>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    LCD::Widget::FactoryTestFrame frame(nullptr);
    frame.setTitle(veltor::trans::translate(LCDFWTranslateManager::instance()->translator(), "LCD::HomeWidgets",
                                            "Global", "FCPass"));
    const bool hostless = !mirel::api::get().service<LCD::FactoryMode::IKeyboardEvent>("lcdKeyboardEvent");
    return hostless && frame.property("title").toString() == "Pass" ? 0 : 1;
}
