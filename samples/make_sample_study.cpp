// Writes the sample study into a folder: make_sample_study FOLDER
#include "SampleStudy.h"

#include <iostream>
#include <string>

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: make_sample_study FOLDER\n";
    return 2;
  }
  const std::string problem = sample::WriteStudy(argv[1]);
  if (!problem.empty()) {
    std::cerr << "make_sample_study: " << problem << "\n";
    return 1;
  }
  return 0;
}
