#pragma once

#include "singletestmodels.h"

/// The complete machine test as it should be.
class MachineModel
{
public:
    explicit MachineModel(ModelHost &host);

    void start();
    void left();
    void right();
    void advance(int milliseconds);
    /// What the destructor of the test calls.
    void destroy();

    int phase = -1;
    int result = 0;
    KeyModel keys;
    TBarModel tbar;
    LinkModel net;
    LinkModel usb;

private:
    Announce heard();
    void show(const QString &screen) { m_host.lines << m_host.expanded(QStringLiteral("phase ") + screen); }
    void log(const char *line) { m_host.lines << QStringLiteral("log ") + QLatin1String(line); }
    void showLevel(const LevelModel &test);
    void showVerdict(const char *title, const char *icon);
    void showTBar(const char *caption, bool keepSteps);
    void showNetButtons(const char *caption);
    void startPhase();
    void startLevels(LevelModel &test);
    void startKeys();
    void nextPhase();
    void fail();
    void onState(int state);
    void onKeyState(int state);
    void onLastSteps(bool last);
    void onNetLinks(const std::vector<bool> &links);
    void onUsbLinks(const std::vector<bool> &links);
    void tick();
    void failSingleTest();
    void rightInNetPhase();

    ModelHost &m_host;
    LevelModel m_screens;
    PatternModel m_patterns;
    LevelModel m_lights;
    bool m_hears = false;
    bool m_keysJudged = false;
    qint64 m_now = 0;
    std::optional<qint64> m_tickDue;
};
