// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// One public operation of views, diagrams, axes or values, and the numbers that choose its object
/// and arguments. Any four bytes are one.
struct Step
{
    std::uint8_t operation;
    std::uint8_t object;
    std::uint8_t first;
    std::uint8_t second;
};

/// The same ones of the same seed. Half of the sequences start with what most hosts have.
std::vector<Step> randomSteps(unsigned seed);

/// Views, diagrams and values that a host might have, and what it might do with them, in any order
/// and inside of one another: an armed observer and an open dialog run the steps that follow. A
/// step that would not be legal (there is nothing to destroy, or it is painting) is left out.
///
/// Ends the process where something does not fit together; sanitizers find the rest.
class World
{
public:
    World();
    /// Takes everything down, and looks whether anything is left.
    ~World();

    void run(const std::vector<Step>& steps);
    static std::string name(const Step& step);

    struct Private;

private:
    std::unique_ptr<Private> d;
};
