// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// Observes a value of the tree, with nothing but installed headers and the platform library.
#include <orvane/platform/base/IObserver.h>
#include <orvane/platform/values/Tree.h>
#include <orvane/platform/values/Values.h>

struct Counter : IObserver
{
    int changes = 0;
    void Update(Observable*, TChangeCode code) override { changes += code == ccContent; }
};

int main()
{
    Counter counter;
    auto* level = values::Tree::Instance().Create<values::ValueNumeric<double>>("Signal/Level");
    level->Attach(&counter);
    level->SetValue(0.5);
    return counter.changes == 1 && level->GetValue() == 0.5 ? 0 : 1;
}
