#include "framework/DataDistructor.h"

#include <new>

void DataDistructorTimeSorting::Destroy(const DataMessage& message) const {
  const std::unique_ptr<List> list(reinterpret_cast<List*>(static_cast<quintptr>(message.word3)));
  if (list == nullptr) {
    return;
  }
  for (void* element : *list) {
    ::operator delete(element);
  }
}
