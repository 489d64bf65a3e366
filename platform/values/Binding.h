// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/IObserver.h"

#include <QPointer>
#include <QString>

#include <functional>
#include <memory>

namespace values {

/// Keeps a role of a view bound to a path of the application's value tree, also when the value is
/// created later or replaced. Calls the role's setter at once, and again each time a value is put
/// at the path.
///
///     values::Binding samples(view, &VCGLTimeDiagram::SetData1_ValuePath, "Receiver/Samples");
///
/// The view may be destroyed first. Destroying the Binding ends the retries and leaves the role as
/// it is. GUI thread only.
class ORVANE_PLATFORM_API Binding : private IObserver
{
public:
    /// Binds to a path and answers whether a value of the right type is bound now.
    using Setter = std::function<bool(const QString& path)>;

    /// @param setter  of a role, such as those of the views.
    template<class View>
    Binding(View& view, bool (View::*setter)(const QString&), const QString& path)
        : Binding(
              view, [&view, setter](const QString& each) { return (view.*setter)(each); }, path)
    {}
    /// @param guard  the setter is called only while this object exists.
    Binding(QObject& guard, Setter setter, const QString& path);
    ~Binding() override;
    Binding(const Binding&) = delete;
    Binding& operator=(const Binding&) = delete;

    /// Whether the value that is at the path now is bound.
    bool isBound() const { return m_state->isBound; }
    /// The path, whether a value is there or not.
    const QString& path() const { return m_path; }
    /// Moves the role to another path, at once and from now on.
    void setPath(const QString& path);

private:
    struct State
    {
        QPointer<QObject> guard;
        Setter setter;
        bool isBound = false;
    };
    /// Takes copies: an observer of the new value may destroy the binding.
    static void bind(std::shared_ptr<State> state, QString path);
    void Update(Observable* source, TChangeCode code) override;

    std::shared_ptr<State> m_state;
    QString m_path;
};

} // namespace values
