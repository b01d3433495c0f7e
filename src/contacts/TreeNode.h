#pragma once

#include <QString>

#include <vector>

// One node of the contact tree. Owned by the tree; nobody but the tree changes its place.
struct TreeNode {
    QString key;           // unique in the tree
    QString text;          // as shown
    QString image;         // key of the shared image list
    QString expandedImage; // the image while the node is open; empty for the same
    QString tag;           // "IsGroup", "NewGroup" or empty
    int colour = 0;        // blue-green-red; 0 stands for the palette's own
    bool bold = false;
    bool expanded = false; // wanted when the node is drawn for the first time
    TreeNode* parent = nullptr;
    std::vector<TreeNode*> children;

    int row = 0;          // place among its siblings
    std::size_t slot = 0; // place in the order of addition
    bool changed = false; // its look changed since the views were told last
};
