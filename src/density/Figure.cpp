// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "density/Figure.h"

#include <QCoreApplication>

namespace density {

QString textOf(Withheld reason)
{
    const auto text = [](const char* source) {
        return QCoreApplication::translate("density::Figure", source);
    };
    switch (reason) {
    case Withheld::No:
        return {};
    case Withheld::TooFew:
        return text(QT_TRANSLATE_NOOP("density::Figure", "Too few symbols to tell."));
    case Withheld::NoLevels:
        return text(QT_TRANSLATE_NOOP("density::Figure", "No two levels can be told apart."));
    case Withheld::Overlap:
        return text(QT_TRANSLATE_NOOP("density::Figure", "The levels overlap."));
    case Withheld::NotGaussian:
        return text(QT_TRANSLATE_NOOP("density::Figure",
                                      "The spread of a level is not Gaussian, so it cannot be "
                                      "extrapolated."));
    case Withheld::NoModel:
        return text(QT_TRANSLATE_NOOP("density::Figure",
                                      "Random jitter with two instants or a sine does not explain "
                                      "the crossings."));
    case Withheld::ShortTraces:
        return text(QT_TRANSLATE_NOOP("density::Figure", "Traces are shorter than two symbols."));
    case Withheld::NoReference:
        return text(
            QT_TRANSLATE_NOOP("density::Figure", "The points of the constellation are not known."));
    }
    return {};
}

} // namespace density
