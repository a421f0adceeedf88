// The keyed collection of the model: owns its objects, indexes by position
// from 1, and finds by key when the object was added under one. Keys compare
// without regard to case. Objects keep their addresses while they stay in the
// collection, so references into it (the current study) survive additions.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/Text.h"

namespace kestrow {

template <class T>
class Collection {
 public:
  Collection() = default;
  Collection(const Collection& other) { CopyFrom(other); }
  Collection& operator=(const Collection& other) {
    if (this != &other) {
      Clear();
      CopyFrom(other);
    }
    return *this;
  }
  Collection(Collection&&) noexcept = default;
  Collection& operator=(Collection&&) noexcept = default;

  int Count() const { return static_cast<int>(items_.size()); }
  bool Empty() const { return items_.empty(); }

  // Adds at the end. With a key already in use nothing is added and the result
  // is null.
  T* Add(T item, const std::string& key = std::string()) {
    if (!key.empty()) {
      if (!index_.emplace(LCase(key), static_cast<int>(items_.size()) + 1).second) return nullptr;
    }
    items_.push_back(std::make_unique<T>(std::move(item)));
    keys_.push_back(key);
    return items_.back().get();
  }

  // Position from 1.
  T& operator()(int i) { return *items_.at(static_cast<std::size_t>(i - 1)); }
  const T& operator()(int i) const { return *items_.at(static_cast<std::size_t>(i - 1)); }

  // Null when no object has that key.
  T* Find(const std::string& key) {
    int i = IndexOf(key);
    return i ? items_[static_cast<std::size_t>(i - 1)].get() : nullptr;
  }
  const T* Find(const std::string& key) const {
    int i = IndexOf(key);
    return i ? items_[static_cast<std::size_t>(i - 1)].get() : nullptr;
  }

  // Position from 1 of the object with that key, 0 if none.
  int IndexOf(const std::string& key) const {
    if (key.empty()) return 0;
    auto it = index_.find(LCase(key));
    return it == index_.end() ? 0 : it->second;
  }

  void Remove(int i) {
    items_.erase(items_.begin() + (i - 1));
    keys_.erase(keys_.begin() + (i - 1));
    Reindex();
  }
  bool Remove(const std::string& key) {
    int i = IndexOf(key);
    if (i) Remove(i);
    return i != 0;
  }
  void Clear() {
    items_.clear();
    keys_.clear();
    index_.clear();
  }

  // Iteration over the objects, in order.
  template <class Ptr, class Ref>
  struct Iter {
    Ptr it;
    Ref operator*() const { return **it; }
    Iter& operator++() {
      ++it;
      return *this;
    }
    bool operator!=(const Iter& o) const { return it != o.it; }
  };
  using iterator = Iter<typename std::vector<std::unique_ptr<T>>::iterator, T&>;
  using const_iterator = Iter<typename std::vector<std::unique_ptr<T>>::const_iterator, const T&>;
  iterator begin() { return {items_.begin()}; }
  iterator end() { return {items_.end()}; }
  const_iterator begin() const { return {items_.begin()}; }
  const_iterator end() const { return {items_.end()}; }

 private:
  void CopyFrom(const Collection& other) {
    items_.reserve(other.items_.size());
    for (const auto& p : other.items_) items_.push_back(std::make_unique<T>(*p));
    keys_ = other.keys_;
    index_ = other.index_;
  }

  // Positions follow a removal.
  void Reindex() {
    index_.clear();
    for (std::size_t i = 0; i < keys_.size(); ++i)
      if (!keys_[i].empty()) index_.emplace(LCase(keys_[i]), static_cast<int>(i + 1));
  }

  std::vector<std::unique_ptr<T>> items_;
  std::vector<std::string> keys_;
  std::unordered_map<std::string, int> index_;  // lower-cased key to position from 1
};

}  // namespace kestrow
