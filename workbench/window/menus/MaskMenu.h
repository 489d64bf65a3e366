// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMenu>

class DensityPane;
class MaskChoice;
class QActionGroup;

/// The menu of the mask that the eye's density is tested against: none, published ones, those of
/// files, and drawing one.
class MaskMenu : public QMenu
{
    Q_OBJECT
public:
    /// @param eye  is switched on with a mask; all outlive it.
    MaskMenu(MaskChoice& masks, DensityPane& eye, QWidget* window);

signals:
    /// What cannot be loaded or saved, a sentence.
    void refused(const QString& why);
    void hitsWanted(); ///< the newest symbols that hit it

private:
    void load();
    void save();
    void draw(bool on);
    void refresh();

    MaskChoice& m_masks;
    DensityPane& m_eye;
    QActionGroup* m_known;
    QAction* m_other; // one that is not published
    QAction* m_save;
    QAction* m_draw;
    QAction* m_hits;
};
