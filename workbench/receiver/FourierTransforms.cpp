// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/FourierTransforms.h"

#include <fftw3.h>

#include <mutex>

namespace {

/// Planning is not safe in several threads at once; execution is.
std::mutex& planning()
{
    static std::mutex mutex;
    return mutex;
}

} // namespace

FourierTransforms::~FourierTransforms()
{
    const std::lock_guard<std::mutex> lock(planning());
    for (const auto& [key, plan] : m_plans)
        fftw_destroy_plan(plan);
}

void FourierTransforms::forward(std::vector<std::complex<double>>& values)
{
    run(values, FFTW_FORWARD);
}

void FourierTransforms::backward(std::vector<std::complex<double>>& values)
{
    run(values, FFTW_BACKWARD);
}

void FourierTransforms::run(std::vector<std::complex<double>>& values, int direction)
{
    auto* const data = reinterpret_cast<fftw_complex*>(values.data());
    const std::pair<std::size_t, int> key(values.size(), direction);
    auto plan = m_plans.find(key);
    if (plan == m_plans.end()) {
        const std::lock_guard<std::mutex> lock(planning());
        plan = m_plans
                   .emplace(key, fftw_plan_dft_1d(static_cast<int>(values.size()), data, data,
                                                  direction, FFTW_ESTIMATE | FFTW_UNALIGNED))
                   .first;
    }
    fftw_execute_dft(plan->second, data, data);
}
