#pragma once
namespace veltor {
namespace trans {
class Translator;
}
}
class LCDFWTranslateManager
{
public:
    static LCDFWTranslateManager *instance();
    veltor::trans::Translator *translator() const;
};
