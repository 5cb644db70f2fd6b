// What a running measure has in hand, put aside while another one runs inside it.
#pragma once

#include <memory>

class MainUI;

/// Takes the work of the running measure when it is made and gives it back when it goes: vectors,
/// mask and sizes, the work volumes with their scalars, the progress panel. An image whose labels
/// are altered meanwhile has its own labels for as long as this lives.
class PutAside {
public:
  explicit PutAside(MainUI& owner);
  PutAside(const PutAside&) = delete;
  PutAside& operator=(const PutAside&) = delete;
  ~PutAside();
  bool Complete() const { return complete; }  ///< false where memory was short

private:
  struct Contents;
  std::unique_ptr<Contents> contents;
  bool complete = false;
};
