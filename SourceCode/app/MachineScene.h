#pragma once

#include <QString>

class SbViewportRegion;
class SoNode;
class SoPerspectiveCamera;
class SoSeparator;

/// What is drawn of a machine, in a window and off screen alike: a camera, lights beside the viewer's own,
/// the machine, and markers.
class MachineScene {
  public:
    /// Takes a reference of `machine`.
    explicit MachineScene(SoSeparator& machine);
    ~MachineScene();
    MachineScene(const MachineScene&) = delete;
    MachineScene& operator=(const MachineScene&) = delete;

    [[nodiscard]] SoSeparator* root() const { return root_; }
    [[nodiscard]] SoPerspectiveCamera* camera() const { return camera_; }

    /// The camera's fields as text.
    [[nodiscard]] QString cameraText() const;
    /// False, and nothing changed, when the text is no camera's.
    bool setCameraText(const QString& text);
    /// From the front, the right and above, with all of the machine in sight.
    void viewAll(const SbViewportRegion& viewport);
    /// Moves the camera, without turning it, to where it sees all of the machine and little else.
    void fit(const SbViewportRegion& viewport);
    /// True when nothing of the machine is cut off at the edges of a picture of this shape.
    [[nodiscard]] bool isAllInSight(float aspect) const;

    /// Near and far planes around all that is drawn.
    void fitClipping(const SbViewportRegion& viewport);

    void addMarker(SoNode* marker);
    /// How bright the light at the camera is beside those of the scene.
    static constexpr float kHeadLight = 0.54F;
    /// A light from where the camera stands now, for renderers that have none of their own.
    void addHeadLight();

  private:
    void addLight(float x, float y, float z, float intensity);

    SoSeparator* root_;  ///< holds one reference
    SoPerspectiveCamera* camera_;
    SoSeparator* markers_;
};
