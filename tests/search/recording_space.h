// recording_space.h: a space of named nodes that records each call of a search.
#pragma once

#include <nmktoolbox/search.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace nmk_search::recording {

using Log = std::vector<std::string>;

/// A node with a name; names are compared for equality.
class NamedNode : public nmkSearchNode {
  public:
    NamedNode(std::string its_name, double its_h, Log* calls)
        : name(std::move(its_name)), h(its_h), log(calls) {}

    double min_cost(const nmkSearchNode& other) const override {
        log->push_back("step " + static_cast<const NamedNode&>(other).name + ">" + name);
        return step;
    }
    double min_cost(const nmkSearchGoal&) const override {
        log->push_back("h " + name);
        return h;
    }

    std::string name;
    mutable double h;
    double step = 1.0;
    Log* log;

  protected:
    bool is_equal(const nmkSearchNode& other) const override {
        log->push_back(name + "==" + static_cast<const NamedNode&>(other).name);
        return name == static_cast<const NamedNode&>(other).name;
    }
};

using NamedNodePointer = std::shared_ptr<const NamedNode>;

class Goal : public nmkSearchGoal {
  public:
    Goal(std::string its_name, Log* calls) : name(std::move(its_name)), log(calls) {}

    bool contains(const nmkSearchNode& node) const override {
        log->push_back("goal " + static_cast<const NamedNode&>(node).name);
        return static_cast<const NamedNode&>(node).name == name;
    }
    bool overshoot_goal(const nmkSearchNode& node, const nmkSearchNodeGenerator&) override {
        const std::string popped = static_cast<const NamedNode&>(node).name;
        log->push_back("overshoot " + popped);
        return on_overshoot && on_overshoot(popped);
    }

    std::string name;
    std::function<bool(const std::string&)> on_overshoot;
    Log* log;
};

class Generator : public nmkSearchNodeGenerator {
  public:
    explicit Generator(Log* calls) : log(calls) {}

    void expand_node(const nmkSearchNode& node,
                     coiFiller<std::shared_ptr<const nmkSearchNode>> filler) const override {
        const std::string name = static_cast<const NamedNode&>(node).name;
        log->push_back("expand " + name);
        const auto found = neighbours.find(name);
        if (found == neighbours.end()) return;
        for (const NamedNodePointer& next : found->second) filler.add(next);
    }
    double find_x_value(double x) const override { return x + 1.0; }

    std::map<std::string, std::vector<NamedNodePointer>> neighbours;
    Log* log;
};

class Verifier : public nmkSearchNodeVerifier {
  public:
    explicit Verifier(Log* calls) : log(calls) {}

    nmkSearchNodeVerifierResult verify(const nmkSearchNode& parent,
                                       const nmkSearchNode& node) const override {
        const auto* from = dynamic_cast<const NamedNode*>(&parent);
        const std::string step = (from ? from->name : std::string("none")) + ">" +
                                 static_cast<const NamedNode&>(node).name;
        log->push_back("verify " + step);
        const auto found = verdicts.find(step);
        return static_cast<nmkSearchNodeVerifierResult>(found == verdicts.end() ? 0
                                                                                : found->second);
    }
    bool is_in_bounds(const nmkSearchNode&) const override {
        log->push_back("in bounds");
        return true;
    }

    std::map<std::string, int> verdicts;  // by "parent>node"; 0 for a step that is not listed
    Log* log;
};

/// Everything that a search needs, and the log of its calls.
class Space {
  public:
    Log log;
    std::shared_ptr<Generator> generator = std::make_shared<Generator>(&log);
    std::shared_ptr<Verifier> verifier = std::make_shared<Verifier>(&log);
    std::shared_ptr<Goal> goal = std::make_shared<Goal>("goal", &log);

    NamedNodePointer node(const std::string& name, double h = 0.0, double step = 1.0) {
        auto made = std::make_shared<NamedNode>(name, h, &log);
        made->step = step;
        return made;
    }
    nmkAStarSearch search(NamedNodePointer start) { return {generator, verifier, start, goal}; }

    /// The names of the route, "a b goal"; empty when there is none.
    static std::string route_of(nmkAStarSearch& search) {
        std::vector<std::shared_ptr<const nmkSearchNode>> nodes;
        search.perform(coiFiller_from_container(nodes));
        std::string names;
        for (const auto& node : nodes) {
            names += (names.empty() ? "" : " ") + static_cast<const NamedNode&>(*node).name;
        }
        return names;
    }
};

}  // namespace nmk_search::recording
