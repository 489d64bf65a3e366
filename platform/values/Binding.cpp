// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/values/Binding.h"

#include "platform/values/Tree.h"

#include <utility>

namespace values {

Binding::Binding(QObject& guard, Setter setter, const QString& path)
    : m_state(std::make_shared<State>())
{
    m_state->guard = &guard;
    m_state->setter = std::move(setter);
    setPath(path);
}

Binding::~Binding() { Tree::Instance().Unwatch(m_path, this); }

void Binding::setPath(const QString& path)
{
    Tree::Instance().Unwatch(m_path, this);
    m_path = path;
    Tree::Instance().Watch(m_path, this);
    bind(m_state, path);
}

void Binding::bind(std::shared_ptr<State> state, QString path)
{
    state->isBound = state->guard && state->setter(path);
}

void Binding::Update(Observable*, TChangeCode code)
{
    if (code == ccContent)
        bind(m_state, m_path);
    else if (code == ccState)
        m_state->isBound = false; // the role unbinds itself
}

} // namespace values
