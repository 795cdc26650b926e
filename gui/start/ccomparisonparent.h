#pragma once

#include <vector>

class Profile;

// The start page as the comparison list sees it: the list lives on one of its views and asks
// it for the template chooser and for the common graph.
class CComparisonParent
{
public:
    virtual ~CComparisonParent() = default;
    // The template chooser, whose choice is added to the list.
    virtual void chooseTemplateForComparison() = 0;
    // The common graph of the profiles, in list order.
    virtual void showComparisonGraph(const std::vector<Profile> &profiles) = 0;
};
