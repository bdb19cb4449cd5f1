#pragma once
#include <QString>
namespace veltor {
namespace trans {
class Translator;
QString translate(Translator *translator, const QString &context, const QString &section, const QString &key);
}
}
