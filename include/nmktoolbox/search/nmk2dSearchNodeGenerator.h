// nmk2dSearchNodeGenerator.h: the neighbours of a node on a lattice of the plane.
//
// For each x value in order, and within it for each y value in order, a neighbour is made, less the
// pair that equals the node exactly. The order settles ties of the search.
#pragma once

#include <geometry/giPoint2.h>
#include <nmktoolbox/export.h>
#include <nmktoolbox/search/nmkSearchNodeGenerator.h>

#include <optional>

class nmk2dSearchNode;
namespace nmk_search {
struct LatticeSteps;
std::optional<LatticeSteps> lattice_steps_of(const nmkSearchNodeGenerator& generator);
}  // namespace nmk_search

class NMKTOOLBOX_EXPORT nmkAbs2dSearchNodeGenerator : public nmkSearchNodeGenerator {
  public:
    /// `node` must be a node of the plane.
    void expand_node(const nmkSearchNode& node,
                     coiFiller<std::shared_ptr<const nmkSearchNode>> filler) const override;
    double find_x_value(double x) const override = 0;
    ~nmkAbs2dSearchNodeGenerator() override = 0;

  protected:
    virtual std::shared_ptr<nmkSearchNode> create_node(const giPoint2& point) const = 0;
    virtual void create_x_values(const nmk2dSearchNode& node, coiFiller<double> filler) const = 0;
    virtual void create_y_values(const nmk2dSearchNode& node, coiFiller<double> filler) const = 0;
};

/// The 8 neighbours, one step away in x, in y or in both.
class NMKTOOLBOX_EXPORT nmk2dSearchNodeGenerator : public nmkAbs2dSearchNodeGenerator {
  public:
    nmk2dSearchNodeGenerator(double step_x, double step_y);
    ~nmk2dSearchNodeGenerator() override;

    /// x + step in x.
    double find_x_value(double x) const override;

  protected:
    std::shared_ptr<nmkSearchNode> create_node(const giPoint2& point) const override;

    /// x, x + step, x - step.
    void create_x_values(const nmk2dSearchNode& node, coiFiller<double> filler) const override;

    /// y, y + step, y - step.
    void create_y_values(const nmk2dSearchNode& node, coiFiller<double> filler) const override;

    double step_x() const { return m_step_x; }
    double step_y() const { return m_step_y; }

  private:
    friend std::optional<nmk_search::LatticeSteps> nmk_search::lattice_steps_of(
        const nmkSearchNodeGenerator& generator);

    double m_step_x;
    double m_step_y;
};

/// The 3 neighbours one step ahead in x.
class NMKTOOLBOX_EXPORT nmkForward2dSearchNodeGenerator : public nmk2dSearchNodeGenerator {
  public:
    using nmk2dSearchNodeGenerator::nmk2dSearchNodeGenerator;
    ~nmkForward2dSearchNodeGenerator() override;

  protected:
    /// x + step.
    void create_x_values(const nmk2dSearchNode& node, coiFiller<double> filler) const override;
};
