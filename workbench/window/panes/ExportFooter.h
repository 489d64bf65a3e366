// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QFont>
#include <QStringList>

class QPainter;
class QRect;
class SignalFeed;

/// Text below an exported picture, so that it explains itself: the signal, its reception, the
/// stretch that is shown, and its figures.
class ExportFooter
{
    Q_DECLARE_TR_FUNCTIONS(ExportFooter)
public:
    /// @param gate     the stretch that is shown, as below the view.
    /// @param figures  each with its name.
    ExportFooter(const SignalFeed& feed, const QString& gate, const QStringList& figures,
                 const QFont& font);

    /// Height in pixels in a picture of a width.
    int height(int width) const;
    void paint(QPainter& painter, const QRect& place) const;

private:
    QStringList m_paragraphs;
    QFont m_font;
};
