#pragma once

#include <QAbstractListModel>
#include <algorithm>
#include <utility>
#include <vector>

namespace cindertop::ui {

/// A list that changes row by row, never as a whole, so that what a view holds by row stays: selection,
/// focus, the place it is scrolled to. `Row` is comparable and has `key()`, what tells it from the others;
/// `value(role)`, what it shows; and static `roleNames()`. Main thread.
template <typename Row>
class KeyedListModel : public QAbstractListModel {
public:
    const std::vector<Row>& rows() const { return rows_; }

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(rows_.size());
    }

    QVariant data(const QModelIndex& index, int role) const override {
        return checkIndex(index, CheckIndexOption::IndexIsValid)
                   ? rows_[static_cast<std::size_t>(index.row())].value(role)
                   : QVariant();
    }

    QHash<int, QByteArray> roleNames() const override { return Row::roleNames(); }

    /// Makes the list these rows, with as few changes as their keys allow.
    void update(std::vector<Row> rows) {
        removeAllBut(rows);
        for (std::size_t place = 0; place < rows.size(); ++place) {
            placeRow(std::move(rows[place]), place);
        }
        removeFrom(rows.size());
    }

private:
    void removeAllBut(const std::vector<Row>& rows) {
        for (std::size_t place = rows_.size(); place-- > 0;) {
            const auto isKept = [&](const Row& row) { return row.key() == rows_[place].key(); };
            if (std::ranges::none_of(rows, isKept)) {
                remove(place, place + 1);
            }
        }
    }

    void removeFrom(std::size_t place) {
        if (place < rows_.size()) {
            remove(place, rows_.size());
        }
    }

    void remove(std::size_t first, std::size_t end) {
        beginRemoveRows({}, static_cast<int>(first), static_cast<int>(end) - 1);
        rows_.erase(iterator(first), iterator(end));
        endRemoveRows();
    }

    void placeRow(Row row, std::size_t place) {
        const auto known = std::ranges::find_if(iterator(place), rows_.end(),
                                                [&](const Row& old) { return old.key() == row.key(); });
        if (known == rows_.end()) {
            beginInsertRows({}, static_cast<int>(place), static_cast<int>(place));
            rows_.insert(iterator(place), std::move(row));
            endInsertRows();
            return;
        }
        if (known != iterator(place)) {
            const auto from = static_cast<int>(known - rows_.begin());
            beginMoveRows({}, from, from, {}, static_cast<int>(place));
            std::rotate(iterator(place), known, known + 1);
            endMoveRows();
        }
        if (rows_[place] != row) {
            rows_[place] = std::move(row);
            const auto changed = index(static_cast<int>(place));
            Q_EMIT dataChanged(changed, changed);
        }
    }

    auto iterator(std::size_t place) { return rows_.begin() + static_cast<std::ptrdiff_t>(place); }

    std::vector<Row> rows_;
};

} // namespace cindertop::ui
