// The early VTK names that the code uses, on the VTK that is installed.
#pragma once

class vtkFloatArray;
class vtkDataArray;
class vtkStructuredPoints;
class vtkPolyData;
class vtkPoints;
class vtkCellArray;

using vtkScalars = vtkFloatArray;  ///< one float per voxel
using vtkNormals = vtkDataArray;   ///< point normals of a surface
