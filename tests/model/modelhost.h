#pragma once

#include <QtCore/QPair>
#include <QtCore/QStringList>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

// The models compute what the component should do, with tables of their own and without any code of the component.
// They write it down as the recording services do: one line for each call, screen and log line.

/// What a port service delivers.
struct ModelPayload
{
    enum Kind {
        Records,
        NullPointer,
        OtherType,
        Nothing
    };
    struct Record
    {
        int port;
        bool linked;
        int nodeType = 26;
        bool blocked = false;
    };

    Kind kind = Records;
    std::vector<Record> records;
};

/// The host as the models see it.
struct ModelHost
{
    /// Adds a call of the service that has @p name in the lines, unless the service is absent.
    void call(bool present, const QString &line)
    {
        if (present)
            lines << line;
    }
    /// Returns the translation of @p key in the language of the tests' catalog.
    QString translated(const QString &key) const;
    /// Returns @p text with each "{key}" translated.
    QString expanded(const QString &text) const;

    QStringList lines;
    QString language;
    bool hasKeyboard = true;
    bool hasFactoryBiz = true;
    bool hasNetworkPort = true;
    bool hasUsb = true;
    bool hasTBar = true;
    /// Looked up at each use, unlike the others.
    bool hasMenu = true;
    int tbarType = 1;
    QList<QPair<int, QString>> keys;
    /// What the port services deliver as soon as a listener registers.
    std::optional<ModelPayload> netAnswer;
    std::optional<ModelPayload> usbAnswer;
};
