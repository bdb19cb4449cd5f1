#pragma once

#include "lcd/widget/factorytestframe.h"

#include <functional>
#include <vector>

/// A page as the tests of the device show it, in the present language.
struct TypicalPage
{
    const char *name;
    std::function<void(LCD::Widget::FactoryTestFrame &)> show;
};

/// The pages that an operator meets, the longest texts among them.
const std::vector<TypicalPage> &typicalPages();

/// The text of @p key in the present language.
QString word(const char *key);
