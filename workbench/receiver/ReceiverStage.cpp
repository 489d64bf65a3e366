// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/receiver/ReceiverStage.h"

ReceiverStage::~ReceiverStage() = default;

void ReceiverStage::finish(BasebandBlock&) {}
