#pragma once

#include "modelhost.h"

#include <QtCore/QMap>

// Models of the seven single tests. `announce` is called with each state that the test announces to its driver.

using Announce = std::function<void(int)>;
using AnnounceLinks = std::function<void(const std::vector<bool> &)>;

/// Screen brightness and key lights: twice through five levels.
struct LevelModel
{
    enum Kind {
        Screens,
        Keys
    };

    void enter();
    void startTest();
    void nextStep();
    void finish(int code);
    void reset();
    void restore();
    void show(int level);

    ModelHost &host;
    Kind kind;
    Announce announce;
    int state = 0;
    int trips = 0;
};

struct PatternModel
{
    void enter();
    void startTest();
    void nextStep();
    void finish(int code);
    void show();

    ModelHost &host;
    Announce announce;
    int state = 0;
    int pattern = 0;
    bool active = false;
};

struct KeyModel
{
    void enter();
    void startTest();
    void press(int key);
    void fail();
    void light(int mode, int color);
    void next();

    ModelHost &host;
    Announce announce;
    std::function<void(int)> announceKey;
    int state = 0;
    bool listening = false;
    QList<QPair<int, QString>> waiting = {};
    QPair<int, QString> current = {-1, QString()};
    int cutKey = 33;
    int lastKey = -1;
};

struct TBarModel
{
    void enter();
    void startTest();
    void nextStep();
    void finish(int code);
    /// The service answers the latest command.
    void answer(bool ok);

    ModelHost &host;
    Announce announce;
    std::function<void(bool)> announceLastSteps;
    int state = 0;
    int step = 0;
    enum {
        NoCommand,
        Command,
        LastCommand
    } latest = NoCommand;
};

/// Both link tests.
struct LinkModel
{
    enum Kind {
        Net,
        Usb
    };

    void enter();
    void startTest();
    void pass();
    void fail();
    void reset();
    void deliver(const ModelPayload &payload, bool changed);

    ModelHost &host;
    Kind kind;
    Announce announce;
    AnnounceLinks announceLinks;
    int state = 0;
    bool subscribed = false;
    bool takesReports = true;
    /// The USB ports seen since the last reset.
    QMap<int, bool> seen = {};

private:
    std::vector<bool> netLinks(const ModelPayload &payload) const;
    std::vector<bool> usbLinks(const ModelPayload &payload);
};
