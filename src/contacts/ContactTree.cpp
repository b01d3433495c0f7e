#include "contacts/ContactTree.h"

#include <utility>

ContactTree::ContactTree() = default;
ContactTree::~ContactTree() = default;

int ContactTree::NodeIndexByKey(const QString& text) const
{
    const TreeNode* first = nullptr;
    for (auto [it, end] = names_.equal_range(text); it != end; ++it) {
        const TreeNode* node = it.value();
        if (node->children.empty() && (!first || node->slot < first->slot))
            first = node;
    }
    return first ? static_cast<int>(first->slot) + 1 : 0;
}

int ContactTree::GroupNodeIndex(const QString& name) const
{
    const TreeNode* node = folder(name);
    const bool isGroup = node && (!node->children.empty() || node->tag == u"IsGroup");
    return isGroup ? static_cast<int>(node->slot) + 1 : 0;
}

int ContactTree::NodeIndexOfKey(const QString& key) const
{
    const TreeNode* node = folder(key);
    const TreeNode* other = row(key);
    if (!node || (other && other->slot < node->slot))
        node = other;
    return node ? static_cast<int>(node->slot) + 1 : 0;
}

TreeNode* ContactTree::named(const QString& key, bool folder) const
{
    for (auto [it, end] = names_.equal_range(key); it != end; ++it) {
        if (it.value()->key == key && !it.value()->parent == folder)
            return it.value();
    }
    return nullptr;
}

TreeNode* ContactTree::Item(int position) const
{
    return position >= 1 && static_cast<std::size_t>(position) <= nodes_.size()
               ? nodes_[static_cast<std::size_t>(position - 1)].get()
               : nullptr;
}

TreeNode* ContactTree::add(const QString& parent, const QString& key, const QString& text,
                           const QString& image)
{
    TreeNode* above = parent.isEmpty() ? nullptr : folder(parent);
    if (key.isEmpty() || named(key, parent.isEmpty()) || (!parent.isEmpty() && !above))
        return nullptr;
    auto made = std::make_unique<TreeNode>();
    TreeNode* node = made.get();
    node->key = key;
    node->text = text == key ? key : text;
    node->image = image;
    node->parent = above;
    node->slot = nodes_.size();
    auto& row = siblings(above);
    node->row = static_cast<int>(row.size());
    row.push_back(node);
    nodes_.push_back(std::move(made));
    names_.insert(key, node);
    if (text != key)
        names_.insert(text, node);
    ++count_;
    restructured();
    return node;
}

TreeNode* ContactTree::addGroup(const QString& name, const QString& tag)
{
    TreeNode* group = add(QString(), name, name, QStringLiteral("ClosedFolder2"));
    if (group) {
        group->expandedImage = QStringLiteral("OpenFolder2");
        group->expanded = true;
        group->tag = tag;
    }
    return group;
}

bool ContactTree::remove(TreeNode* node)
{
    if (!node)
        return false;
    restructured();
    detach(node);
    retire(node);
    return true;
}

void ContactTree::move(TreeNode* node, TreeNode* parent)
{
    detach(node);
    auto& row = siblings(parent);
    node->parent = parent;
    node->row = static_cast<int>(row.size());
    row.push_back(node);
    restructured();
}

void ContactTree::clear()
{
    restructured();
    for (auto& node : nodes_) {
        if (node)
            retired_.push_back(std::move(node));
    }
    nodes_.clear();
    roots_.clear();
    names_.clear();
    count_ = 0;
}

void ContactTree::detach(TreeNode* node)
{
    auto& row = siblings(node->parent);
    row.erase(row.begin() + node->row);
    for (auto later = static_cast<std::size_t>(node->row); later < row.size(); ++later)
        row[later]->row = static_cast<int>(later);
}

void ContactTree::retire(TreeNode* node)
{
    for (TreeNode* child : node->children)
        retire(child);
    forgetNames(node);
    retired_.push_back(std::move(nodes_[node->slot]));
    --count_;
}

void ContactTree::forgetNames(TreeNode* node)
{
    names_.remove(node->key, node);
    if (node->text != node->key)
        names_.remove(node->text, node);
}

void ContactTree::setText(TreeNode& node, const QString& text)
{
    forgetNames(&node);
    node.text = text;
    names_.insert(node.key, &node);
    if (node.text != node.key)
        names_.insert(node.text, &node);
    look(node);
}

void ContactTree::setImage(TreeNode& node, const QString& image)
{
    if (node.image == image)
        return;
    node.image = image;
    look(node);
}

void ContactTree::setLook(TreeNode& node, bool bold, int colour)
{
    if (node.bold == bold && node.colour == colour)
        return;
    node.bold = bold;
    node.colour = colour;
    look(node);
}

void ContactTree::restructured()
{
    const bool first = isSettled();
    restructured_ = true;
    // The reset will show them.
    for (TreeNode* node : std::exchange(changed_, {}))
        node->changed = false;
    if (first)
        emit unsettled();
}

void ContactTree::look(TreeNode& node)
{
    if (restructured_ || node.changed)
        return;
    node.changed = true;
    changed_.push_back(&node);
    if (changed_.size() == 1)
        emit unsettled();
}

void ContactTree::settle()
{
    if (restructured_) {
        beginResetModel();
        compact();
        restructured_ = false;
        endResetModel();
        retired_.clear();
    } else {
        tellLooks();
    }
}

void ContactTree::compact()
{
    if (static_cast<std::size_t>(count_) == nodes_.size())
        return;
    std::erase(nodes_, nullptr);
    for (std::size_t slot = 0; slot < nodes_.size(); ++slot)
        nodes_[slot]->slot = slot;
}

// One notice for each parent, from its first changed child to its last: a view searches its rows at every
// notice.
void ContactTree::tellLooks()
{
    QHash<TreeNode*, std::pair<TreeNode*, TreeNode*>> spans;
    for (TreeNode* node : std::exchange(changed_, {})) {
        node->changed = false;
        auto& [first, last] = spans[node->parent];
        if (!first || node->row < first->row)
            first = node;
        if (!last || node->row > last->row)
            last = node;
    }
    for (const auto& [first, last] : std::as_const(spans))
        emit dataChanged(indexOf(first), indexOf(last));
}

QModelIndex ContactTree::indexOf(const TreeNode* node) const
{
    return node ? createIndex(node->row, 0, node) : QModelIndex();
}

QModelIndex ContactTree::index(int row, int column, const QModelIndex& parent) const
{
    const auto& children = parent.isValid() ? node(parent)->children : roots_;
    if (column != 0 || row < 0 || static_cast<std::size_t>(row) >= children.size())
        return {};
    return createIndex(row, 0, children[static_cast<std::size_t>(row)]);
}

QModelIndex ContactTree::parent(const QModelIndex& child) const
{
    return child.isValid() ? indexOf(node(child)->parent) : QModelIndex();
}

int ContactTree::rowCount(const QModelIndex& parent) const
{
    return static_cast<int>(parent.isValid() ? node(parent)->children.size() : roots_.size());
}

int ContactTree::columnCount(const QModelIndex&) const
{
    return 1;
}

QVariant ContactTree::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const TreeNode& shown = *node(index);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return shown.text;
    case Qt::AccessibleDescriptionRole:
        return describe ? describe(shown) : QVariant();
    case Qt::ToolTipRole: // a tool tip takes markup, whatever the contact calls itself
        return describe ? describe(shown).toHtmlEscaped().replace(u'\n', QStringLiteral("<br>")) : QVariant();
    case ImageRole:
        return shown.image;
    case ExpandedImageRole:
        return shown.expandedImage.isEmpty() ? shown.image : shown.expandedImage;
    case ColourRole:
        return shown.colour;
    case BoldRole:
        return shown.bold;
    case KeyRole:
        return shown.key;
    case TagRole:
        return shown.tag;
    default:
        return {};
    }
}

bool ContactTree::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || role != Qt::EditRole)
        return false;
    const TreeNode& edited = *node(index);
    const QString key = edited.key;
    const bool isRow = edited.parent;
    const QString text = value.toString();
    if (text == edited.text)
        return false;
    // The node may have been rebuilt while the person typed.
    if (TreeNode* now = standing(edited))
        setText(*now, text);
    if (isRow)
        emit labelEdited(key, text);
    return true;
}

Qt::ItemFlags ContactTree::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::ItemIsDropEnabled;
    return Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsEditable | Qt::ItemIsDragEnabled |
           Qt::ItemIsDropEnabled;
}
