// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/FrequencyShift.h"

BasebandFormat FrequencyShift::configure(const ReceiverSettings& settings,
                                         const BasebandFormat& format)
{
    m_isOn = settings.shift != 0.0;
    m_step = settings.shift / format.sampleRate;
    m_rotation = Rotation(m_step);
    reset();
    return format;
}

void FrequencyShift::process(BasebandBlock& block)
{
    if (!m_isOn)
        return;
    m_rotation.turn(block.samples.data(), block.samples.size(),
                    m_step * static_cast<double>(m_count));
    m_count += static_cast<std::int64_t>(block.samples.size());
}

void FrequencyShift::reset() { m_count = 0; }
