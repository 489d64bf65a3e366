// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

class VCGLEyeDiagram;
class VCGLIQDiagram;
class VCGLTimeDiagram;

/// Binds the views to the values of the value tree that the feed writes.
namespace viewBindings {

void bind(VCGLTimeDiagram& view);
void bind(VCGLEyeDiagram& view);
void bind(VCGLIQDiagram& view);
/// Lets a view go without what comes, while it is not seen; bind makes it see again.
void release(VCGLEyeDiagram& view);
void release(VCGLIQDiagram& view);

} // namespace viewBindings
