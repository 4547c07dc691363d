#pragma once

#include <Inventor/nodes/SoIndexedLineSet.h>

#include <vector>

struct PathArrays;

/// The line set of a tool path. It is drawn in its plain colour, since its normals are no normals; and picks
/// look at the boxes around runs of segments first, so that a click on a path of a million points costs
/// milliseconds and not a good part of a second. Everything else is the library's.
class PathLineSet : public SoIndexedLineSet {
  public:
    PathLineSet();

    /// A vertex property with the vertices, the attitudes in its normals, and the indices.
    void setPath(const PathArrays& path);
    void clearPath();

    void GLRender(SoGLRenderAction* action) override;
    void rayPick(SoRayPickAction* action) override;

  protected:
    ~PathLineSet() override = default;  // only Coin's count deletes

  private:
    void pickRun(SoRayPickAction& action, const SbVec3f* vertices, int first, int last);

    std::vector<SbBox3f> boxes_;  ///< see PathArrays
};
