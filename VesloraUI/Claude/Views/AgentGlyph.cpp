// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Views/AgentGlyph.h"

#include "VesloraUI/Style/VesloraStyle.h"

namespace veslora {

AgentGlyph AgentGlyph::of(const AgentTraits& traits) {
    AgentGlyph glyph;
    glyph.text = QString::fromUtf8(traits.glyph);
    glyph.name = QString::fromUtf8(traits.name);
    glyph.fullName = QString::fromUtf8(traits.fullName);
    glyph.color = traits.color ? QColor(traits.color->red, traits.color->green, traits.color->blue)
                               : VesloraStyle::textPrimary();
    glyph.isSymbol = traits.isGlyphSymbol;
    glyph.isMascot = traits.picture == AgentPicture::mascot;
    return glyph;
}

} // namespace veslora
