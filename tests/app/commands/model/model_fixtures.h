// model_fixtures.h: small triangle models with figures that are known, for the tests of `nmk
// model`.
#pragma once

#include <gtest/gtest.h>

#include <nmkprogressbreak/nmkProgressBreak.h>
#include <memory>
#include <ostream>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "app/shell/command_runner.h"
#include "commands/model/model_figures.h"
#include "commands/model/read_model.h"
#include "commands/model/welded_mesh.h"
#include "model_samples.h"
#include "scratch_directory.h"

namespace nmk_model {

using Facets = std::vector<model_samples::Corners>;

/// Two triangles for a parallelogram, counter-clockwise like a, b, c, d.
inline void add_square(Facets& facets, const giPoint3& a, const giPoint3& b, const giPoint3& c,
                       const giPoint3& d) {
    facets.push_back({a.x, a.y, a.z, b.x, b.y, b.z, c.x, c.y, c.z});
    facets.push_back({a.x, a.y, a.z, c.x, c.y, c.z, d.x, d.y, d.z});
}

/// A cube with a corner at `at`, twelve triangles; the last two are the top.
inline Facets cube(const giPoint3& at, double size) {
    const auto corner = [&](int x, int y, int z) {
        return giPoint3(at.x + x * size, at.y + y * size, at.z + z * size);
    };
    Facets facets;
    add_square(facets, corner(0, 0, 0), corner(0, 1, 0), corner(1, 1, 0), corner(1, 0, 0));
    add_square(facets, corner(0, 0, 0), corner(1, 0, 0), corner(1, 0, 1), corner(0, 0, 1));
    add_square(facets, corner(1, 0, 0), corner(1, 1, 0), corner(1, 1, 1), corner(1, 0, 1));
    add_square(facets, corner(1, 1, 0), corner(0, 1, 0), corner(0, 1, 1), corner(1, 1, 1));
    add_square(facets, corner(0, 1, 0), corner(0, 0, 0), corner(0, 0, 1), corner(0, 1, 1));
    add_square(facets, corner(0, 0, 1), corner(1, 0, 1), corner(1, 1, 1), corner(0, 1, 1));
    return facets;
}

/// The cube without its top.
inline Facets open_box(double size) {
    Facets facets = cube({0, 0, 0}, size);
    facets.resize(10);
    return facets;
}

inline Facets joined(Facets facets, const Facets& more) {
    facets.insert(facets.end(), more.begin(), more.end());
    return facets;
}

/// So many triangles between a few places, so that edges are shared by any number of them.
inline Facets random_facets(int count, int places, std::mt19937& random) {
    std::uniform_int_distribution<int> place(0, places - 1);
    Facets facets;
    for (int i = 0; i < count; ++i) {
        model_samples::Corners corners{};
        for (double& value : corners) value = place(random);
        facets.push_back(corners);
    }
    return facets;
}

/// A mesh whose nodes are shared.
inline WeldedMesh mesh_of(const Facets& facets) {
    Model model;
    model.blocks.push_back(std::make_unique<giTriBlock>());
    model_samples::fill_unshared(*model.blocks.back(), facets);
    return welded_mesh(model);
}

inline ModelFigures figures_of(const Facets& facets) {
    Model model;
    model.blocks.push_back(std::make_unique<giTriBlock>());
    model_samples::fill_unshared(*model.blocks.back(), facets);
    return model_figures(model, welded_mesh(model));
}

/// Runs `nmk model`.
inline nmk_shell::Printed run_words(std::vector<std::string> words) {
    words.insert(words.begin(), "model");
    return nmk_shell::run(words);
}

/// Requests a stop at the call of that number, from 1; of a stage of this title, if it has one.
class Stopper : public nmkProgressBreak {
  public:
    explicit Stopper(int last_call, std::string stage = {})
        : m_calls_left(last_call), m_stage(std::move(stage)) {}
    int send_progress_bar_to_0(const char* title) override { return m_title = title, 0; }
    int jump_to(double) override {
        if (!m_stage.empty() && m_title != m_stage) return 0;
        return --m_calls_left <= 0 ? 1 : 0;
    }

  private:
    int m_calls_left;
    std::string m_stage;
    std::string m_title;
};

/// Words of a command line that are refused, and the message.
struct WrongWords {
    const char* name;
    std::vector<std::string> words;
    const char* message;
};

inline std::ostream& operator<<(std::ostream& out, const WrongWords& wrong) {
    return out << wrong.name;
}

}  // namespace nmk_model
