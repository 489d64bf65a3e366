// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMenu>

class DensityPane;
class MaskChoice;
class QActionGroup;

/// The menu of the mask that the eye's density is tested against: none, a published one, one from a
/// file, or one that the user draws.
class MaskMenu : public QMenu
{
    Q_OBJECT
public:
    /// @param eye  switched on when a mask is chosen. All arguments outlive the menu.
    MaskMenu(MaskChoice& masks, DensityPane& eye, QWidget* window);

signals:
    /// A mask cannot be loaded or saved.
    /// @param why  a sentence for the user.
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
