#include <nmktoolbox/search/nmkSearchNode.h>

nmkSearchNode::~nmkSearchNode() = default;

bool nmkSearchNode::operator==(const nmkSearchNode& other) const { return is_equal(other); }

bool nmkSearchNode::operator!=(const nmkSearchNode& other) const { return !is_equal(other); }
