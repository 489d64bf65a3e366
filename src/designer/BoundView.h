// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "designer/DesignerExport.h"

#include <QString>
#include <QWidget>

#include <array>
#include <memory>

namespace values {
class Binding;
}
class VCGLEyeDiagram;
class VCGLIQDiagram;
class VCGLTimeDiagram;

/// A view for forms, whose properties name the values of the application's tree that it shows; see
/// TimeView, EyeView and IqView. VCGLTimeDiagram, VCGLEyeDiagram and VCGLIQDiagram say which type
/// each value has and what it means.
///
/// A form is often made before the values are: a path is bound whenever a value is put there. An
/// empty path unbinds its value. GUI thread only.
class ORVANE_DESIGNER_API BoundView : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString samplesPath READ samplesPath WRITE setSamplesPath)
    Q_PROPERTY(QString triggerPath READ triggerPath WRITE setTriggerPath)
    Q_PROPERTY(QString xMinimumPath READ xMinimumPath WRITE setXMinimumPath)
    Q_PROPERTY(QString xMaximumPath READ xMaximumPath WRITE setXMaximumPath)
    Q_PROPERTY(QString yMinimumPath READ yMinimumPath WRITE setYMinimumPath)
    Q_PROPERTY(QString yMaximumPath READ yMaximumPath WRITE setYMaximumPath)
    Q_PROPERTY(bool bound READ isBound DESIGNABLE false STORED false)
public:
    ~BoundView() override;
    ///@{
    /// Path of the value of a role; empty for none. Setting it binds, or unbinds, at once.
    QString samplesPath() const { return path(Samples); }
    void setSamplesPath(const QString& path) { setPath(Samples, path); }
    QString triggerPath() const { return path(Trigger); }
    void setTriggerPath(const QString& path) { setPath(Trigger, path); }
    QString xMinimumPath() const { return path(XMinimum); }
    void setXMinimumPath(const QString& path) { setPath(XMinimum, path); }
    QString xMaximumPath() const { return path(XMaximum); }
    void setXMaximumPath(const QString& path) { setPath(XMaximum, path); }
    QString yMinimumPath() const { return path(YMinimum); }
    void setYMinimumPath(const QString& path) { setPath(YMinimum, path); }
    QString yMaximumPath() const { return path(YMaximum); }
    void setYMaximumPath(const QString& path) { setPath(YMaximum, path); }
    ///@}

    /// Whether every path that is not empty is bound to a value of the right type.
    bool isBound() const;

protected:
    enum Role {
        Samples,
        Quadrature,
        Markers,
        Rate,
        XMinimum,
        XMaximum,
        YMinimum,
        YMaximum,
        Trigger,
        RoleCount
    };
    explicit BoundView(QWidget* parent);
    /// Puts the view into this widget, which it fills.
    void hold(QWidget* view);
    QString path(Role role) const;
    void setPath(Role role, const QString& path);
    /// Whether the view has bound the value of a path.
    virtual bool bindPath(Role role, const QString& path) = 0;

private:
    std::array<std::unique_ptr<values::Binding>, RoleCount> m_bindings;
};

/// VCGLTimeDiagram for forms.
class ORVANE_DESIGNER_API TimeView : public BoundView
{
    Q_OBJECT
    Q_PROPERTY(QString markersPath READ markersPath WRITE setMarkersPath)
    Q_PROPERTY(QString ratePath READ ratePath WRITE setRatePath)
public:
    explicit TimeView(QWidget* parent = nullptr);
    ///@{
    /// Path of a role that only some views have, see BoundView.
    QString markersPath() const { return path(Markers); }
    void setMarkersPath(const QString& path) { setPath(Markers, path); }
    QString ratePath() const { return path(Rate); }
    void setRatePath(const QString& path) { setPath(Rate, path); }
    ///@}
    /// Owned by this widget.
    VCGLTimeDiagram* view() const { return m_view; }

protected:
    bool bindPath(Role role, const QString& path) override;

private:
    VCGLTimeDiagram* m_view;
};

/// VCGLEyeDiagram for forms.
class ORVANE_DESIGNER_API EyeView : public BoundView
{
    Q_OBJECT
    Q_PROPERTY(QString markersPath READ markersPath WRITE setMarkersPath)
    Q_PROPERTY(QString ratePath READ ratePath WRITE setRatePath)
public:
    explicit EyeView(QWidget* parent = nullptr);
    ///@{
    /// Path of a role that only some views have, see BoundView.
    QString markersPath() const { return path(Markers); }
    void setMarkersPath(const QString& path) { setPath(Markers, path); }
    QString ratePath() const { return path(Rate); }
    void setRatePath(const QString& path) { setPath(Rate, path); }
    ///@}
    /// Owned by this widget.
    VCGLEyeDiagram* view() const { return m_view; }

protected:
    bool bindPath(Role role, const QString& path) override;

private:
    VCGLEyeDiagram* m_view;
};

/// VCGLIQDiagram for forms.
class ORVANE_DESIGNER_API IqView : public BoundView
{
    Q_OBJECT
    Q_PROPERTY(QString quadraturePath READ quadraturePath WRITE setQuadraturePath)
public:
    explicit IqView(QWidget* parent = nullptr);
    /// Q beside the samples, which are I.
    QString quadraturePath() const { return path(Quadrature); }
    void setQuadraturePath(const QString& path) { setPath(Quadrature, path); }
    /// Owned by this widget.
    VCGLIQDiagram* view() const { return m_view; }

protected:
    bool bindPath(Role role, const QString& path) override;

private:
    VCGLIQDiagram* m_view;
};
