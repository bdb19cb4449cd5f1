#include "lcd/keyboardproxy/constants.h"
#include "lcd/memorycache/constants.h"
#include "lcd/protocol/itemkeys.h"
#include "lcd/widget/icons.h"

#include <QtTest/QtTest>

using namespace LCD;

class tst_SharedConstants : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void values_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, const QString &value, const char *expected) {
            QTest::newRow(name) << value << QString::fromUtf8(expected);
        };
        const auto text = [](const std::string &value) { return QString::fromStdString(value); };
        using namespace ProtocolImpl::constants;
        row("ItemKey_HM_ADVANCED", ItemKey_HM_ADVANCED, "hm.advanced");
        row("ItemKey_HM_COMM", ItemKey_HM_COMM, "hm.comm");
        row("ItemKey_HM_PRESET", ItemKey_HM_PRESET, "hm.preset");
        row("ItemKey_EM_USBPLAYER", ItemKey_EM_USBPLAYER, "em.usbplayer");
        row("ItemKey_NM_ADVANCED_WORKMODE", ItemKey_NM_ADVANCED_WORKMODE, "nm.advanced.workmode");
        row("ItemKey_NM_ADVANCED_DEVICEWORKMODE", ItemKey_NM_ADVANCED_DEVICEWORKMODE,
            "nm.advanced.workmode.deviceworkmode");
        row("ItemKey_NM_ADVANCED_DEVICEWORKMODEITEM", ItemKey_NM_ADVANCED_DEVICEWORKMODEITEM,
            "nm.advanced.workmode.deviceworkmodeitem");
        row("ItemKey_NM_LANGUAGE", ItemKey_NM_LANGUAGE, "hm.language");
        row("LCDIniFilePath", text(MemoryCache::constants::LCDIniFilePath), "../share/Lcd.ini");
        row("KEY_OVERRIDE_LANGUAGE", text(MemoryCache::constants::KEY_OVERRIDE_LANGUAGE), "General/OverrideLanguage");
        using namespace KeyboardProxy;
        row("CodeUp", text(CodeUp), "\xe2\x86\x91");
        row("CodeDown", text(CodeDown), "\xe2\x86\x93");
        row("longScreenHeadImage", text(longScreenHeadImage),
            "./../share/themes/default/images/headtransparentbkg.png");
        row("backupAndGlobalImage", text(backupAndGlobalImage), "./../share/themes/default/images/backupandglobal.png");
        row("layerStateImage", text(layerStateImage), "./../share/themes/default/images/layerStateImage.png");
        row("globalImage", text(globalImage), "./../share/themes/default/images/global.png");
        row("backupImage", text(backupImage), "./../share/themes/default/images/backup.png");
        using namespace Widget;
        row("Pass_Icon_File", Pass_Icon_File, "icon_pass.png");
        row("NoPass_Icon_File", NoPass_Icon_File, "icon_nopass.png");
        row("Icon_Genlock_Normal", Icon_Genlock_Normal, "GenlockNormal");
        row("Icon_Genlock_Pass", Icon_Genlock_Pass, "GenlockPass");
        row("Icon_Genlock_NoPass", Icon_Genlock_NoPass, "GenlockNoPass");
        row("Icon_LTC_Normal", Icon_LTC_Normal, "LTCNormal");
        row("Icon_LTC_Pass", Icon_LTC_Pass, "LTCPass");
        row("Icon_LTC_NoPass", Icon_LTC_NoPass, "LTCNoPass");
        row("Icon_TypeC_Link", Icon_TypeC_Link, "TypecLink");
        row("Icon_TypeC_LinkF", Icon_TypeC_LinkF, "TypecLinkF");
        row("Icon_TypeC_LinkR", Icon_TypeC_LinkR, "TypecLinkR");
        row("Icon_TypeC_UnLink", Icon_TypeC_UnLink, "TypecUnLink");
        row("Icon_Net_Normal", Icon_Net_Normal, "NetNormal");
        row("Icon_Net_Pass", Icon_Net_Pass, "NetPass");
        row("Icon_Net_NoPass", Icon_Net_NoPass, "NetNoPass");
        row("Icon_Usb_Normal", Icon_Usb_Normal, "UsbNormal");
        row("Icon_Usb_Pass", Icon_Usb_Pass, "UsbPass");
        row("Icon_Usb_NoPass", Icon_Usb_NoPass, "UsbNoPass");
    }
    void values()
    {
        QFETCH(QString, value);
        QFETCH(QString, expected);
        QCOMPARE(value, expected);
    }
    void imagesOfTheLongScreen()
    {
        QCOMPARE(KeyboardProxy::longScreenPNG.size(), std::size_t(5));
        int area = 0;
        for (const char *name : {"screen", "layer", "input", "preset", "companion"})
            QCOMPARE(KeyboardProxy::longScreenPNG.at(static_cast<KeyboardProxy::eAreaModuleType>(area++)),
                     std::string("./../share/themes/default/images/") + name + "_bg.png");
    }
    void iconsByType()
    {
        QCOMPARE(Widget::g_IconMap.size(), 3);
        QCOMPARE(Widget::g_IconMap.value(static_cast<Widget::IconType>(0)), QStringLiteral("icon_pass.png"));
        QCOMPARE(Widget::g_IconMap.value(static_cast<Widget::IconType>(1)), QStringLiteral("icon_nopass.png"));
        QVERIFY(Widget::g_IconMap.contains(static_cast<Widget::IconType>(2)));
        QCOMPARE(Widget::g_IconMap.value(static_cast<Widget::IconType>(2)), QString());
    }
};

QTEST_GUILESS_MAIN(tst_SharedConstants)
#include "tst_sharedconstants.moc"
