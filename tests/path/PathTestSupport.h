#pragma once

#include <Inventor/SbBox3f.h>
#include <Inventor/SbVec3f.h>
#include <Inventor/nodes/SoNode.h>
#include <gtest/gtest.h>

#include <vector>

#include "path/FakeItem.h"
#include "support/TestSupport.h"

/// The process's machine has the chain "XYZCA", names are the shipped ones, and the scene library is ready.
class PathTest : public ::testing::Test {
  protected:
    void SetUp() override;

  private:
    TemporaryInstallation installation_;
};

/// First node of this scene name below `root`, hidden ones included; nullptr when there is none.
[[nodiscard]] SoNode* findNode(SoNode* root, const char* name);
/// How many nodes of this name there are below `root`, hidden ones included; shared ones count once a path.
[[nodiscard]] int countNodes(SoNode* root, const char* name);

/// Corners of all triangles of the nodes of this name (all of `root` when nullptr), in the frame of `root`,
/// three by three.
[[nodiscard]] std::vector<SbVec3f> trianglesOf(SoNode* root, const char* name = nullptr);
[[nodiscard]] SbBox3f boxOf(const std::vector<SbVec3f>& points);
/// Volume that closed, outward looking triangles hold.
[[nodiscard]] double volumeOf(const std::vector<SbVec3f>& triangles);

/// An identity with a turn about an axis and a shift behind it, for row vectors.
[[nodiscard]] SbMatrix placed(const SbVec3f& axis, float angle_deg, const SbVec3f& shift);
