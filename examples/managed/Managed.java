// SPDX-License-Identifier: Apache-2.0
// Calls the index-offset twins on the runtime's own heap arrays.
public class Managed {
  static native int smooth(float[] x, int from, float[] y, int to, int n);

  public static void main(String[] args) {
    System.load(args[0]);
    float[] x = new float[12], y = new float[12];
    for (int i = 0; i < 12; ++i) x[i] = i;
    int status = smooth(x, 2, y, 1, 8);
    System.out.println("y[4] = " + y[4] + ", y[8] = " + y[8]);
    System.exit(status == 0 && y[0] == 0 && y[4] == 3.5f && y[8] == 7.5f && y[9] == 0 ? 0 : 1);
  }
}
