// nmkGiTriBlockColour.h: the colour of a block of triangles, as a feature.
#pragma once

#include <ncamcontainer/basecoFeature.h>
#include <nmktoolbox/export.h>

#include <cstdint>

class NMKTOOLBOX_EXPORT nmkGiTriBlockColour {
  public:
    nmkGiTriBlockColour() = default;
    nmkGiTriBlockColour(const nmkGiTriBlockColour&) = default;
    nmkGiTriBlockColour& operator=(const nmkGiTriBlockColour&) = default;
    virtual ~nmkGiTriBlockColour();

    /// A number of the host's; -1, the default, is none.
    int get_colour() const noexcept { return m_colour; }
    void set_colour(int colour) noexcept { m_colour = colour; }

  private:
    std::int32_t m_colour = -1;
};

class NMKTOOLBOX_EXPORT nmkGiTriBlockColourcoFeature : public coDataFeature<nmkGiTriBlockColour> {
  public:
    basecoFeature* create() const override;
    const coFeatureID& get_id() const override;

  private:
    static const coFeatureID s_id;
};
