// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/Libraries.h"

#include <SoapySDR/Version.hpp>
#include <archive.h>
#include <liquid/liquid.h>
#include <sndfile.h>
#include <zmq.h>

QStringList libraries::versions()
{
    int major = 0;
    int minor = 0;
    int patch = 0;
    zmq_version(&major, &minor, &patch);
    return {QString::fromLatin1(sf_version_string()), QString::fromLatin1(archive_version_string()),
            QStringLiteral("liquid-dsp %1").arg(QString::fromLatin1(liquid_libversion())),
            QStringLiteral("ZeroMQ %1.%2.%3").arg(major).arg(minor).arg(patch),
            QStringLiteral("SoapySDR %1").arg(QString::fromStdString(SoapySDR::getLibVersion()))};
}
