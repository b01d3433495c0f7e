#pragma once

#include <QAbstractItemModel>
#include <QMultiHash>

#include <functional>
#include <memory>
#include <vector>

// One node of the contact tree: a folder at the root, or a row in one. Owned by the tree; nobody but the tree
// changes its place.
struct TreeNode {
    QString key;           // unique among the folders, or among the rows
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

// The nodes of the contact list in the order of their addition, and the model through which views see them.
//
// Views are told nothing until settle(): however many nodes came, went or changed, they hear of one reset, or
// of one change a group. Removed nodes live on until then, so that an index in a view's hands never dangles.
//
// Positions count from 1 in the order of addition, 0 stands for none; they hold until the next settle().
class ContactTree : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Role { ImageRole = Qt::UserRole, ExpandedImageRole, ColourRole, BoldRole, KeyRole, TagRole };

    ContactTree();
    ~ContactTree() override;

    // What is told of a node beside its text, in lines of plain text; asked when it is to be shown.
    std::function<QString(const TreeNode&)> describe;

    // The first node without children whose key or text equals `text`.
    int NodeIndexByKey(const QString& text) const;
    // The node of this key, if it has children or the tag "IsGroup".
    int GroupNodeIndex(const QString& name) const;
    // The node of this key.
    int NodeIndexOfKey(const QString& key) const;
    // Null out of range.
    TreeNode* Item(int position) const;
    // The folder, or the row, of this key; null for none. A folder may be named as a row's key.
    TreeNode* folder(const QString& key) const { return named(key, true); }
    TreeNode* row(const QString& key) const { return named(key, false); }
    // What stands now in the place of a node that may have been removed meanwhile.
    TreeNode* standing(const TreeNode& node) const { return named(node.key, !node.parent); }
    int Count() const { return count_; }

    // Makes room for so many more at once.
    void expect(std::size_t more)
    {
        nodes_.reserve(nodes_.size() + more);
        names_.reserve(names_.size() + 2 * static_cast<qsizetype>(more));
    }
    // Adds a row below the folder of key `parent`, or a folder for an empty one. Null, and nothing added,
    // when there is no such parent or when `key` is empty or taken.
    TreeNode* add(const QString& parent, const QString& key, const QString& text, const QString& image);
    // A root node that is drawn as an open folder. Null when the key is taken.
    TreeNode* addGroup(const QString& name, const QString& tag);
    // Removes the node with all below it. False for null.
    bool remove(TreeNode* node);
    // Makes `parent` the parent of `node`, as its last child.
    void move(TreeNode* node, TreeNode* parent);
    void clear();

    void setText(TreeNode& node, const QString& text);
    void setImage(TreeNode& node, const QString& image);
    void setLook(TreeNode& node, bool bold, int colour);

    // Tells the views what happened since the last call.
    void settle();
    bool isSettled() const { return !restructured_ && changed_.empty(); }
    // How many removed nodes wait for the next settle().
    std::size_t retiredCount() const { return retired_.size(); }

    static TreeNode* node(const QModelIndex& index)
    {
        return static_cast<TreeNode*>(index.internalPointer());
    }
    QModelIndex indexOf(const TreeNode* node) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }

signals:
    // The person gave the row of `key` another text.
    void labelEdited(const QString& key, const QString& text);
    // Something waits for settle().
    void unsettled();

private:
    TreeNode* named(const QString& key, bool folder) const;
    std::vector<TreeNode*>& siblings(TreeNode* parent) { return parent ? parent->children : roots_; }
    void detach(TreeNode* node);
    void retire(TreeNode* node);
    void forgetNames(TreeNode* node);
    void restructured();
    void look(TreeNode& node);
    void tellLooks();
    void compact();

    std::vector<std::unique_ptr<TreeNode>> nodes_; // null where a node was removed
    std::vector<std::unique_ptr<TreeNode>> retired_;
    std::vector<TreeNode*> roots_;
    std::vector<TreeNode*> changed_;
    QMultiHash<QString, TreeNode*> names_; // by key, and by text where it is another
    int count_ = 0;
    bool restructured_ = false;
};
