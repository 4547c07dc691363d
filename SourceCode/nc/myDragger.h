#pragma once

#include <Inventor/draggers/SoJackDragger.h>

/// The handle on one control point of a curve. Make it with `create`; the scene owns it.
class myDragger : public SoJackDragger {
  public:
    /// A handle for the point of this index, at `place`, named as the installation names draggers. The
    /// caller takes the first reference.
    [[nodiscard]] static myDragger* create(int index, const SbVec3f& place);

    [[nodiscard]] int index() const { return index_; }

  protected:
    ~myDragger() override = default;  // only Coin's count deletes

  private:
    myDragger();
    int index_ = -1;  ///< of the point it stands for
};
