#include "commands/commonoptions.h"

#include "session/session.h"

namespace panelhost {

QList<QCommandLineOption> commonOptions()
{
    return {
        {QStringLiteral("component"), QStringLiteral("The component's library."), QStringLiteral("PATH")},
        {QStringLiteral("pages"), QStringLiteral("The library of the repair mode's pages, or none."),
         QStringLiteral("PATH")},
        {QStringLiteral("share"), QStringLiteral("Directory with the two XML files. Files with errors are refused."),
         QStringLiteral("DIR")},
        {QStringLiteral("share-unchecked"),
         QStringLiteral("Like --share, but files with errors are passed to the component."), QStringLiteral("DIR")},
        {QStringLiteral("language"), QStringLiteral("Language of the component's texts."), QStringLiteral("CODE"),
         QStringLiteral("en")},
        {QStringLiteral("tbar"), QStringLiteral("Type of the T-Bar: slider or fader."), QStringLiteral("TYPE"),
         QStringLiteral("slider")},
        {QStringLiteral("usb-stick"),
         QStringLiteral("Directory where the USB stick for the log export is mounted; none; or temporary for an empty "
                        "stick that is discarded."),
         QStringLiteral("DIR"), Session::noUsbStick},
        {QStringLiteral("size"), QStringLiteral("Size of the LCD in pixels."), QStringLiteral("WxH"),
         QStringLiteral("800x480")},
    };
}

}
