/// A drawing in memory: layers, blocks and entities with real geometry. The DXF reader fills it; the host
/// stand-in opens it. Lengths in drawing units, angles in radians, world frame unless said.
#ifndef STANDIN_DRAWING_H
#define STANDIN_DRAWING_H

#include "standin_objectarx_api.h"

// clang-format off
#include "dbmain.h"
#include "gepnt3d.h"
#include "gevec3d.h"
#include "gemat3d.h"
// clang-format on

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace standin {

struct Layer {
  std::string name;
  int colour = 7;  ///< AutoCAD colour index
  bool isLocked = false;
  bool isVisible = true;  ///< neither off nor frozen
};

/// What every entity has. Handle 0 asks the drawing to give the next free one.
struct EntityProperties {
  std::uint64_t handle = 0;
  std::string layer = "0";
  int colour = 256;  ///< AutoCAD colour index; 256 = by layer
};

using Polyline3 = std::vector<AcGePoint3d>;

/// A part of what an entity draws. Only a part of an insertion may differ from its entity in layer and
/// colour.
struct DrawnPart {
  std::string layer;  ///< decides whether it is seen
  int colour = 256;   ///< AutoCAD colour index; 256: that of the layer `colourLayer`; 0: by block
  std::string colourLayer;
  std::vector<Polyline3> outline;
};

/// What every entity of a drawing is besides a database entity: something that can be drawn and listed.
class STANDIN_OBJECTARX_API DrawnEntity {
 public:
  explicit DrawnEntity(EntityProperties properties);
  virtual ~DrawnEntity();
  DrawnEntity(const DrawnEntity&) = delete;
  DrawnEntity& operator=(const DrawnEntity&) = delete;

  /// This entity as a database entity: open modes, extents and transformBy.
  virtual AcDbEntity& entity() = 0;
  /// DXF type name: "LINE", "CIRCLE", "INSERT" ...
  virtual const char* typeName() const = 0;
  /// Defining points, as listed: a line's ends, a circle's centre, a polyline's vertices, a block's insertion
  /// point.
  virtual Polyline3 points() const = 0;
  /// What is drawn: polylines in world coordinates, curves in chords (an arc of 360 degrees in 64).
  virtual std::vector<Polyline3> outline() const = 0;
  /// The outline by layer and colour: the contents of a block on layer "0" are on the insertion's layer,
  /// those of colour "by block" have the insertion's colour.
  virtual std::vector<DrawnPart> parts() const;
  const EntityProperties& properties() const { return mProperties; }

 private:
  friend class Drawing;
  EntityProperties mProperties;
};

class STANDIN_OBJECTARX_API Drawing {
 public:
  struct View {  ///< the active viewport's view, as a drawing stores it
    AcGePoint3d target{0, 0, 0};
    AcGeVector3d direction{0, 0, 1};  ///< from the target to the camera, not normalised
    double centerX = 0;               ///< centre of the view in its display frame
    double centerY = 0;
    double height = 1;
    double aspect = 1;  ///< width / height
    double twist = 0;
    bool isPerspective = false;
    double lensLength = 50;
  };

  Drawing();
  ~Drawing();
  Drawing(const Drawing&) = delete;
  Drawing& operator=(const Drawing&) = delete;

  /// Adds a layer, or replaces the one of that name. Layer "0" is there from the start.
  void addLayer(const Layer& layer);
  const Layer& layer(const std::string& name) const;  ///< the layer "0" for a name that is not there
  const std::map<std::string, Layer>& layers() const;

  /// Begins a block; entities added with addToBlock become its contents. A later block of the name replaces
  /// it.
  void addBlock(const std::string& name, const AcGePoint3d& basePoint);
  void addToBlock(const std::string& name, std::unique_ptr<DrawnEntity> entity);
  bool hasBlock(const std::string& name) const;
  const std::vector<std::unique_ptr<DrawnEntity>>& blockEntities(const std::string& name) const;
  AcGePoint3d blockBase(const std::string& name) const;

  /// Adds an entity to model space and returns its handle. Throws std::invalid_argument when the handle is
  /// taken.
  std::uint64_t add(std::unique_ptr<DrawnEntity> entity);

  /// Entities of model space in order of addition, erased ones included.
  const std::vector<std::unique_ptr<DrawnEntity>>& entities() const;
  DrawnEntity* find(std::uint64_t handle) const;  ///< null when not there
  /// Serial number of the drawing, from 1: the upper part of the ids of its objects.
  std::uint64_t serial() const;
  /// By the lower part of its id; null when not there.
  DrawnEntity* findByNumber(std::uint64_t number) const;
  void erase(std::uint64_t handle);
  bool isErased(std::uint64_t handle) const;

  /// Box of everything drawn (erased entities left out); none for an empty drawing.
  std::optional<AcDbExtents> extents() const;

  /// A floating viewport of the layout: its place on the sheet, and what it shows when the file says so.
  struct FloatingViewport {
    double centerX = 0;
    double centerY = 0;
    double width = 1;
    double height = 1;
    std::optional<View> view;
  };

  /// Those of the layout, in the order of their numbers from 2 on.
  std::vector<FloatingViewport> mFloatingViewports;
  /// The stored view of the active viewport, when the file has one.
  std::optional<View> mView;
  /// The day on which the drawing was made, in days since 1970-01-01, when the file says so.
  std::optional<std::int64_t> mDay;
  /// Entities of the file whose types the stand-in does not support, counted by type.
  std::map<std::string, std::size_t> mSkipped;

 private:
  struct Data;
  std::unique_ptr<Data> mDataP;
};

// --- the entity kinds; each makes one entity. Arbitrary-axis frame ("OCS") points are already in world here.
// ---

STANDIN_OBJECTARX_API std::unique_ptr<DrawnEntity> makeLine(EntityProperties, const AcGePoint3d& start,
                                                            const AcGePoint3d& end);
STANDIN_OBJECTARX_API std::unique_ptr<DrawnEntity> makePoint(EntityProperties, const AcGePoint3d& at);
/// `normal` unit; the circle is in the plane through `centre` perpendicular to it.
STANDIN_OBJECTARX_API std::unique_ptr<DrawnEntity> makeCircle(EntityProperties, const AcGePoint3d& centre,
                                                              const AcGeVector3d& normal, double radius);
/// Counter-clockwise about `normal` from `startAngle` to `endAngle`, angles from `xAxis` (unit,
/// perpendicular).
STANDIN_OBJECTARX_API std::unique_ptr<DrawnEntity> makeArc(EntityProperties, const AcGePoint3d& centre,
                                                           const AcGeVector3d& normal,
                                                           const AcGeVector3d& xAxis, double radius,
                                                           double startAngle, double endAngle);
/// `majorAxis` from the centre to the end of the major axis; parameters in radians.
STANDIN_OBJECTARX_API std::unique_ptr<DrawnEntity> makeEllipse(EntityProperties, const AcGePoint3d& centre,
                                                               const AcGeVector3d& normal,
                                                               const AcGeVector3d& majorAxis, double ratio,
                                                               double startParameter, double endParameter);
struct PolylineVertex {
  AcGePoint3d at;
  double bulge = 0;  ///< tangent of a quarter of the arc's angle to the next vertex; 0 = straight
};
/// `typeName` "LWPOLYLINE" or "POLYLINE"; bulges turn about `normal` (unit).
STANDIN_OBJECTARX_API std::unique_ptr<DrawnEntity> makePolyline(EntityProperties, const char* typeName,
                                                                const std::vector<PolylineVertex>& vertices,
                                                                const AcGeVector3d& normal, bool isClosed);
/// A polygon mesh of m by n vertices, row by row ("POLYLINE").
STANDIN_OBJECTARX_API std::unique_ptr<DrawnEntity> makeMesh(EntityProperties,
                                                            std::vector<AcGePoint3d> vertices, std::size_t m,
                                                            std::size_t n, bool isClosedM, bool isClosedN);
/// A polyface mesh ("POLYLINE"): faces of three or four indices into the vertices (0-based).
STANDIN_OBJECTARX_API std::unique_ptr<DrawnEntity> makePolyface(EntityProperties,
                                                                std::vector<AcGePoint3d> vertices,
                                                                std::vector<std::vector<std::size_t>> faces);
STANDIN_OBJECTARX_API std::unique_ptr<DrawnEntity> makeFace(EntityProperties,
                                                            const std::array<AcGePoint3d, 4>& corners);
/// A block's insertion: `transform` takes the block's frame (base point at its origin) to the world. The
/// block is looked up in `drawing` whenever it is drawn.
STANDIN_OBJECTARX_API std::unique_ptr<DrawnEntity> makeInsert(EntityProperties, const Drawing& drawing,
                                                              const std::string& block,
                                                              const AcGeMatrix3d& transform);

}  // namespace standin

#endif
