#pragma once

#include "expectations/journalquerycounter.h"
#include "mockinput.h"
#include "scenario/scenario.h"

#include <QtCore/QObject>

/// A board of mock devices: keys, knob, T-Bar, an LED for each key, backlights, net interfaces of the kernel (veth
/// pairs) and USB ports.
class MockBoard
{
public:
    MockBoard(MockBed &bed, const QMap<QString, int> &halKeys);

    /// Returns the profile of this board.
    QByteArray profile() const;

    void setKeyDown(int halKey, bool down);
    void navigate(const QString &key);
    void moveTBar(double position);
    void setPlugged(const QString &port, bool plugged);
    /// Takes the input device of the keys away.
    void unplugKeys() { m_keys->hangUp(); }
    /// Returns the key whose LED blinks, as sysfs says; 0 if none does.
    int blinkingKey() const;

private:
    void setInterfaceUp(int number, bool up);
    void setUsbPlugged(int number, bool plugged);

    MockBed &m_bed;
    QMap<QString, int> m_halKeys;
    QMap<int, unsigned> m_codes; // by hal key
    std::unique_ptr<MockInput> m_keys;
    std::unique_ptr<MockInput> m_knob;
    std::unique_ptr<MockInput> m_bar;
};

/// Plays the steps of a scenario on a board, as an operator with hands: keys, knob, T-Bar and plugs are hardware; only
/// soft buttons are touched on the LCD. Time passes as it does for the clock of the session: as fast as
/// possible if it is stopped, or by the wall clock. GUI thread.
class HardwareOperator
{
public:
    HardwareOperator(panelhost::Session &session, MockBoard &board, panelhost::JournalQueryCounter &counter)
        : m_session(session), m_board(board), m_counter(counter)
    {
    }

    /// Returns an empty string, or which step failed and why.
    QString play(const QVector<panelhost::Step> &steps);

private:
    QString play(const panelhost::Step &step);
    QString perform(const panelhost::OperatorAction &action);
    QString touch(const panelhost::OperatorAction &action);
    QString walkKeys();
    QString expect(const panelhost::Step &step);
    void advance(qint64 duration);
    bool waitForClock(panelhost::Milliseconds duration, const std::function<bool()> &done);
    bool waitForActions(int count, const std::function<void()> &doIt);

    panelhost::Session &m_session;
    MockBoard &m_board;
    panelhost::JournalQueryCounter &m_counter;
};
