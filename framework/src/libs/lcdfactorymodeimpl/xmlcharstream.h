#pragma once

#include <QtCore/QBuffer>
#include <QtCore/QString>
#include <QtXml/QXmlInputSource>

#include <algorithm>
#include <vector>

namespace LCD::FactoryModeImpl {

QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED

/// The characters of a document as the parser reads them: decoded by its own input source, and with the text of an
/// entity in the place of each reference that is followed with enter().
class XmlCharStream
{
public:
    explicit XmlCharStream(const QByteArray &data) : m_source(open(data)) { advance(); }

    bool atEnd() const { return m_current >= QChar(QXmlInputSource::EndOfData); }
    QChar current() const { return m_current; }
    /// Position of the current character or of the reference that leads to it, counted from 1.
    int line() const { return m_line; }
    int column() const { return m_column; }
    /// How many entities the current character lies in.
    int level() const { return static_cast<int>(m_entities.size()); }

    void advance()
    {
        while (!m_entities.empty()) {
            Entity &entity = m_entities.back();
            if (entity.position < entity.text.size()) {
                m_current = entity.text.at(entity.position++);
                return;
            }
            m_entities.pop_back();
        }
        advanceDocument();
    }

    /// Goes on with @p text. False if the stream is in an entity of this name already: that one would never end.
    bool enter(const QString &name, const QString &text)
    {
        const auto isSame = [&name](const Entity &entity) { return entity.name == name; };
        if (std::any_of(m_entities.cbegin(), m_entities.cend(), isSame))
            return false;
        m_entities.push_back({name, text, 0});
        return true;
    }

private:
    struct Entity
    {
        QString name;
        QString text;
        int position;
    };

    QBuffer *open(const QByteArray &data)
    {
        m_buffer.setData(data);
        m_buffer.open(QIODevice::ReadOnly);
        return &m_buffer;
    }

    void advanceDocument()
    {
        if (m_current == QLatin1Char('\n')) {
            ++m_line;
            m_column = 0;
        }
        ++m_column;
        if (m_position == m_chunk.size()) {
            m_source.fetchData();
            m_chunk = m_source.data();
            m_position = 0;
        }
        m_current = m_chunk.isEmpty() ? QChar(QXmlInputSource::EndOfDocument) : m_chunk.at(m_position++);
    }

    QBuffer m_buffer;
    QXmlInputSource m_source;
    QString m_chunk;
    int m_position = 0;
    std::vector<Entity> m_entities;
    QChar m_current;
    int m_line = 1;
    int m_column = 0;
};

QT_WARNING_POP

}
